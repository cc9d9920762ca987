#pragma once

#include <QByteArray>
#include <QMap>
#include <QStringList>

// A table as a tool or an archive writes it, and what must come of it;
// tests/data/formats/README.md describes the files.
struct FormatCase {
    explicit FormatCase(const QString& text);

    QString name;
    QStringList arguments;
    int status = 0;
    QStringList messages;
    QStringList check; // the verdict, then codes of findings; empty where it does not matter
    QMap<qint64, QStringList> rows; // by line: place and -log10 p, or the reason
    QByteArray file;

private:
    void addLine(const QString& line);
};

// The texts of all cases of a file, or of all files of a folder.
QStringList formatCases(const QString& path);

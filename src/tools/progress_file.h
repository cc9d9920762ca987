#pragma once

#include <QFile>

// A file that reports how far it was read on a terminal, in per cent, and wipes that out when it is
// closed. Silent on files that are read in a moment.
class ProgressFile : public QFile {
public:
    // `name` is what the user calls the file. Nothing is reported where `terminal` is null.
    ProgressFile(const QString& path, QString name, QIODevice* terminal);
    ~ProgressFile() override;

protected:
    qint64 readData(char* data, qint64 size) override;

private:
    void report();

    QString m_name;
    QIODevice* m_terminal;
    qint64 m_read = 0;     // bytes
    qint64 m_reported = 0; // bytes read at the last report
};

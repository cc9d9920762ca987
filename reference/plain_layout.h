#pragma once

#include "prepare_options.h"
#include "table_format.h"

#include <QStringList>

// Lines and fields. Texts are bytes, one a QChar.
namespace plain {

// How a table is laid out.
struct Layout {
    Separator separator = Separator::Tab; // of its body
    qsizetype header = -1;                // its line, from 0; -1 without
    QStringList titles;
    bool quoted = false;
    bool decimalComma = false;

    // A number's text, with a point.
    QString withPoint(const QString& text) const;
    // A position's text: 1,234,567 where a comma can be in a field is 1234567.
    QString wholeText(QString text) const;
    // Whether one title says that the lines end in a list, and have more fields then.
    bool endsInList() const;

    // Whether commas or semicolons part the row into more fields than there are titles.
    bool isTooLong(const QStringList& row) const;
};

// The lines of an unpacked file, from 1 in the file and from 0 here.
QStringList linesOf(const QByteArray& file);

QStringList fieldsOf(const QString& line, Separator separator);

// Without the spaces and tabs at both ends.
QString trimmed(const QString& text);

bool isComment(const QString& line);
bool isEmpty(const QString& line);
bool isMissing(const QString& text);

} // namespace plain

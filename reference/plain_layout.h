#pragma once

#include "prepare_options.h"
#include "table_format.h"

#include <QStringList>

// Lines and fields. Texts are bytes, one a QChar.
namespace plain {

// The lines of an unpacked file, from 1 in the file and from 0 here.
QStringList linesOf(const QByteArray& file);

QStringList fieldsOf(const QString& line, Separator separator);

// Whether the first rows of a body have as many fields as its titles, though a few may be short.
bool bodyAgrees(QList<QStringList> rows, qsizetype columns);

bool isComment(const QString& line);
bool isEmpty(const QString& line);
bool isMissing(const QString& text);

} // namespace plain

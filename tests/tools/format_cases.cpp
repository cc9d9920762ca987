#include "format_cases.h"

#include <QDir>
#include <QFileInfo>
#include <QStringEncoder>

namespace {

QByteArray written(QString table, const QStringList& ways) {
    while (table.endsWith(u"\n\n"))
        table.chop(1);
    if (ways.contains("nolf"))
        table.chop(1);
    if (ways.contains("tabs"))
        table.replace(u' ', u'\t').replace(u'~', u' ');
    if (ways.contains("crlf"))
        table.replace(u"\n"_qs, u"\r\n"_qs);
    if (ways.contains("cr"))
        table.replace(u'\n', u'\r');
    if (ways.contains("utf16"))
        return QStringEncoder(QStringEncoder::Utf16, QStringEncoder::Flag::WriteBom)(table);
    return (ways.contains("bom") ? "\xef\xbb\xbf" : "") + table.toUtf8();
}

} // namespace

FormatCase::FormatCase(const QString& text) : name(text.section(u'\n', 0, 0)) {
    const qsizetype mark = text.indexOf(u"<<<"), table = text.indexOf(u'\n', mark) + 1;
    for (const QString& line : text.left(mark).split(u'\n').mid(1))
        if (!line.isEmpty())
            addLine(line);
    file = written(text.mid(table), text.mid(mark, table - mark - 1).split(u' ').mid(1));
}

// One of those before the table.
void FormatCase::addLine(const QString& line) {
    const QString word = line.section(u' ', 0, 0), rest = line.section(u' ', 1);
    if (word == u"args")
        arguments = rest.split(u' ');
    else if (word == u"exit")
        status = rest.toInt();
    else if (word == u"says")
        messages << rest;
    else if (word == u"check")
        check = rest.split(u' ');
    else
        rows.insert(word.toLongLong(), rest.split(u' '));
}

QStringList formatCases(const QString& path) {
    QStringList texts;
    if (QFileInfo(path).isDir()) {
        for (const QFileInfo& file : QDir(path).entryInfoList({"*.txt"}, QDir::Files, QDir::Name))
            texts += formatCases(file.filePath());
        return texts;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    for (const QString& text : QString::fromUtf8('\n' + file.readAll()).split(u"\n=== "_qs).mid(1))
        texts << text + u'\n';
    return texts;
}

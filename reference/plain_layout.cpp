#include "plain_layout.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringDecoder>

namespace plain {

namespace {

bool isSeparator(QChar character, Separator separator) {
    switch (separator) {
    case Separator::Tab:
        return character == u'\t';
    case Separator::Comma:
        return character == u',';
    case Separator::Semicolon:
        return character == u';';
    default:
        return false;
    }
}

// The text of a field that begins with a quote at `place`, and the place after it, which is a
// separator or the end; nothing where no quote closes it.
bool readQuoted(const QString& line, Separator separator, qsizetype& place, QString& text) {
    static const QRegularExpression quoted("\\G[ ]*\"((?:[^\"]|\"\")*)\"[ ]*");
    const QRegularExpressionMatch match = quoted.match(line, place);
    if (!match.hasMatch())
        return false;
    const qsizetype end = match.capturedEnd();
    if (end < line.size() && !isSeparator(line[end], separator))
        return false;
    text = match.captured(1).replace("\"\"", "\"").trimmed();
    place = end;
    return true;
}

QStringList separatedFields(const QString& line, Separator separator) {
    QStringList fields;
    for (qsizetype place = 0;; ++place) {
        QString text;
        if (!readQuoted(line, separator, place, text)) {
            const qsizetype begin = place;
            while (place < line.size() && !isSeparator(line[place], separator))
                ++place;
            text = line.mid(begin, place - begin).trimmed();
        }
        fields << text;
        if (place >= line.size())
            return fields;
    }
}

QStringList spacedFields(const QString& line, const QString& gap) {
    static QHash<QString, QRegularExpression> patterns; // compiled once
    const QString pattern =
        QString("\\G\"((?:[^\"]|\"\")*)\"(?:" + gap + "|$)|\\G(.+?)(?:" + gap + "|$)");
    if (!patterns.contains(pattern))
        patterns[pattern].setPattern(pattern);
    const QRegularExpression& field = patterns[pattern];
    QStringList fields;
    auto matches = field.globalMatch(line.trimmed());
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        fields << (match.capturedStart(1) >= 0 ? match.captured(1).replace("\"\"", "\"").trimmed()
                                               : match.captured(2).trimmed());
    }
    return fields;
}

QByteArray utf8(const QByteArray& file) {
    if (file.startsWith("\xff\xfe") || file.startsWith("\xfe\xff")) {
        QStringDecoder decode(QStringDecoder::Utf16);
        return QString(decode(file)).toUtf8();
    }
    return file.startsWith("\xef\xbb\xbf") ? file.mid(3) : file;
}

} // namespace

QStringList linesOf(const QByteArray& file) {
    QString text = QString::fromLatin1(utf8(file));
    text.replace("\r\n", "\n");
    text.replace(u'\r', u'\n');
    QStringList lines = text.split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

QStringList fieldsOf(const QString& line, Separator separator) {
    switch (separator) {
    case Separator::Spaces:
        return spacedFields(line, "[ ]+");
    case Separator::WideSpaces:
        return spacedFields(line, "[ ]{2,}");
    case Separator::WhiteSpace:
        return spacedFields(line, "(?:[ ]*\\t[ ]*|[ ]+)");
    default:
        return separatedFields(line, separator);
    }
}

bool bodyAgrees(QList<QStringList> rows, qsizetype columns) {
    for (QStringList& fields : rows)
        while (fields.size() > columns && fields.last().isEmpty())
            fields.removeLast();
    // The file may be cut short there.
    if (rows.size() > 1 && rows.size() <= 20 && rows.last().size() < columns)
        rows.removeLast();
    int agreeing = 0, shorter = 0;
    rows = rows.mid(0, 20);
    for (const QStringList& fields : rows) {
        agreeing += fields.size() == columns ? 1 : 0;
        shorter += fields.size() < columns ? 1 : 0;
    }
    return agreeing + shorter == rows.size() && agreeing > shorter;
}

bool isComment(const QString& line) {
    return line.startsWith(u'#');
}

bool isEmpty(const QString& line) {
    return line.trimmed().isEmpty();
}

bool isMissing(const QString& text) {
    static const QStringList missing{"",     "NA",   "N/A",  "n/a",  "na", "nan", "NaN", "-nan",
                                     "null", "NULL", "None", "NONE", ".",  "-",   "#NA", "NR"};
    return missing.contains(text);
}

} // namespace plain

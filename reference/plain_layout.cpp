#include "plain_layout.h"

#include "plain_titles.h"
#include "title_table.h"

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
// separator or the end; nothing where no quote closes it. Lone quotes inside stay.
bool readQuoted(const QString& line, Separator separator, qsizetype& place, QString& text) {
    static const QRegularExpression start("\\G[ ]*\""), rest("\\G\"[ ]*");
    const QRegularExpressionMatch match = start.match(line, place);
    if (!match.hasMatch())
        return false;
    for (qsizetype quote = match.capturedEnd(); quote < line.size(); ++quote) {
        // Two fields between tabs with a lone quote each stay two.
        if (separator == Separator::Tab && line[quote] == u'\t')
            return false;
        const QRegularExpressionMatch closing = rest.match(line, quote);
        if (!closing.hasMatch())
            continue;
        const qsizetype end = closing.capturedEnd();
        if (end == line.size() || isSeparator(line[end], separator)) {
            text = trimmed(
                line.mid(match.capturedEnd(), quote - match.capturedEnd()).replace("\"\"", "\""));
            place = end;
            return true;
        }
        if (line.mid(quote, 2) == QLatin1String("\"\""))
            ++quote;
    }
    return false;
}

QStringList separatedFields(const QString& line, Separator separator) {
    QStringList fields;
    for (qsizetype place = 0;; ++place) {
        QString text;
        if (!readQuoted(line, separator, place, text)) {
            const qsizetype begin = place;
            while (place < line.size() && !isSeparator(line[place], separator))
                ++place;
            text = trimmed(line.mid(begin, place - begin));
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
    auto matches = field.globalMatch(trimmed(line));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        fields << (match.capturedStart(1) >= 0 ? trimmed(match.captured(1).replace("\"\"", "\""))
                                               : trimmed(match.captured(2)));
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

QString Layout::withPoint(const QString& text) const {
    // A lone point would be a missing value.
    const bool hasComma = decimalComma && !text.contains(u'.') && text != u",";
    return hasComma ? QString(text).replace(u',', u'.') : text;
}

QString Layout::wholeText(QString text) const {
    static const QRegularExpression thousands("^\\d{1,3}(,\\d{3})+$");
    if (thousands.match(text).hasMatch())
        return quoted && !decimalComma ? text.remove(u',') : text;
    return withPoint(text);
}

bool Layout::endsInList() const {
    for (const QString& title : titles)
        if (normalTitle(title).contains(fromData(title_table::listTitlePiece)))
            return true;
    return false;
}

bool Layout::isTooLong(const QStringList& row) const {
    const bool parts = separator == Separator::Comma || separator == Separator::Semicolon;
    return parts && !titles.isEmpty() && !endsInList() &&
           !row.mid(titles.size()).join(QString()).isEmpty();
}

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
        return spacedFields(line, "[ ][ \\t]*");
    case Separator::WideSpaces:
        return spacedFields(line, "[ ]{2}[ \\t]*");
    case Separator::WhiteSpace:
        return spacedFields(line, "[ \\t]+");
    default:
        return separatedFields(line, separator);
    }
}

bool isComment(const QString& line) {
    return line.startsWith(u'#');
}

QString trimmed(const QString& text) {
    static const QRegularExpression blanks("^[ \\t]+|[ \\t]+$");
    return QString(text).remove(blanks);
}

bool isEmpty(const QString& line) {
    return trimmed(line).isEmpty();
}

bool isMissing(const QString& text) {
    static const QStringList missing{"",     "NA",   "N/A",  "n/a",  "na", "nan", "NaN", "-nan",
                                     "null", "NULL", "None", "NONE", ".",  "-",   "#NA", "NR"};
    return missing.contains(text);
}

} // namespace plain

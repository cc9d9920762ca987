#include "utf8.h"

#include <algorithm>

namespace {

void appendLoneSurrogate(char16_t code, QByteArray& bytes) {
    bytes.append(static_cast<char>(0xE0 | (code >> 12)));
    bytes.append(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    bytes.append(static_cast<char>(0x80 | (code & 0x3F)));
}

bool isPairAt(QStringView text, qsizetype i) {
    return text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
}

// The index of the first lone surrogate at or after `from`, or the text's size.
qsizetype loneSurrogate(QStringView text, qsizetype from) {
    while (from < text.size() && (!text[from].isSurrogate() || isPairAt(text, from)))
        from += isPairAt(text, from) ? 2 : 1;
    return std::min(from, text.size());
}

// In strict UTF-8, the byte after 0xED is below 0xA0.
bool isSurrogateCode(std::string_view bytes) {
    return bytes.size() >= 3 && bytes[0] == '\xED' && static_cast<unsigned char>(bytes[1]) >= 0xA0;
}

// The index of the first surrogate code at or after `from`, or the number of bytes.
size_t surrogateCode(std::string_view bytes, size_t from) {
    size_t at = bytes.find('\xED', from);
    while (at < bytes.size() && !isSurrogateCode(bytes.substr(at)))
        at = bytes.find('\xED', at + 1);
    return std::min(at, bytes.size());
}

// Keeps a leading byte-order mark, which QString::fromUtf8() drops.
QString plainText(std::string_view bytes) {
    const QString text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    return bytes.starts_with("\xEF\xBB\xBF") ? QChar(QChar::ByteOrderMark) + text : text;
}

QChar surrogateOf(std::string_view code) {
    return QChar((code[0] & 0x0F) << 12 | (code[1] & 0x3F) << 6 | (code[2] & 0x3F));
}

// Joins the high surrogate that `bytes` ends with to the low one that `text` starts with, if there
// are both. Returns the number of characters of `text` used.
qsizetype joinPartedPair(QStringView text, QByteArray& bytes) {
    if (text.isEmpty() || !text[0].isLowSurrogate() || bytes.size() < 3)
        return 0;
    const std::string_view code(bytes.constData() + bytes.size() - 3, 3);
    if (!isSurrogateCode(code) || !surrogateOf(code).isHighSurrogate())
        return 0;
    const QChar pair[] = {surrogateOf(code), text[0]};
    bytes.chop(3);
    bytes.append(QStringView(pair, 2).toUtf8());
    return 1;
}

} // namespace

void appendUtf8(QStringView text, QByteArray& bytes) {
    qsizetype from = joinPartedPair(text, bytes);
    while (from < text.size()) {
        const qsizetype lone = loneSurrogate(text, from);
        bytes.append(text.sliced(from, lone - from).toUtf8());
        if (lone < text.size())
            appendLoneSurrogate(text[lone].unicode(), bytes);
        from = lone + 1;
    }
}

QString fromUtf8(std::string_view bytes) {
    QString text;
    size_t from = 0;
    while (from < bytes.size()) {
        const size_t to = surrogateCode(bytes, from);
        text.append(plainText(bytes.substr(from, to - from)));
        if (to < bytes.size())
            text.append(surrogateOf(bytes.substr(to)));
        from = to + 3;
    }
    return text;
}

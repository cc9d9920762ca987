#pragma once

#include <QByteArray>
#include <QList>
#include <algorithm>
#include <iterator>
#include <string_view>

// The title without a byte-order mark, without spaces around it and without one pair of quotes.
QByteArray bareTitle(std::string_view raw);

// In lower case (ASCII), each run of other characters than letters and digits turned into one "_",
// none of them at an end: `P.value` is p_value, `#CHROM` is chrom. Bytes above 0x7f are kept.
QByteArray normalTitle(std::string_view raw);

// The words of a normal title.
QList<QByteArray> titleWords(std::string_view raw);

// A normal title without the names of genome builds in it and without any "_": `Pos_GRCh37` is pos.
struct PlaceTitle {
    QByteArray title;
    QByteArray build; // "36", "37" ..., empty where the title names none
};
PlaceTitle placeTitle(std::string_view raw);

// True where one of the list's texts equals the text.
template <typename List>
bool contains(const List& list, std::string_view text) {
    return std::find(std::begin(list), std::end(list), text) != std::end(list);
}

inline std::string_view viewOf(const QByteArray& text) {
    return {text.constData(), size_t(text.size())};
}

inline QByteArray bytesOf(std::string_view text) {
    return QByteArray(text.data(), qsizetype(text.size()));
}

#include "excerpt.h"

#include "utf8.h"

QString excerpt(std::string_view text) {
    constexpr qsizetype longest = 100;      // characters
    constexpr size_t bytesPerCharacter = 4; // at most
    return fromUtf8(text.substr(0, longest * bytesPerCharacter)).left(longest);
}

#pragma once

// Characters of ASCII, whatever the locale.

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool isSpace(char c) {
    return c == ' ' || c == '\t';
}

constexpr char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

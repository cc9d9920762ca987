#pragma once

#include <QByteArrayView>

// How a text stores characters, by the byte-order mark that it starts with. Only those of ASCII are
// looked for.
struct CodeUnits {
    size_t markSize = 0; // bytes
    size_t width = 1;    // bytes of a unit
    size_t low = 0;      // the place of its lowest byte

    // Whether a unit is this character.
    bool isAt(const char* unit, char character) const {
        for (size_t i = 0; i < width; ++i)
            if (unit[i] != (i == low ? character : '\0'))
                return false;
        return true;
    }
};

CodeUnits codeUnitsOf(QByteArrayView start);

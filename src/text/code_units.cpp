#include "code_units.h"

#include <QStringConverter>

CodeUnits codeUnitsOf(QByteArrayView start) {
    switch (QStringConverter::encodingForData(start).value_or(QStringConverter::Latin1)) {
    case QStringConverter::Utf8:
        return {3, 1, 0};
    case QStringConverter::Utf16LE:
        return {2, 2, 0};
    case QStringConverter::Utf16BE:
        return {2, 2, 1};
    case QStringConverter::Utf32LE:
        return {4, 4, 0};
    case QStringConverter::Utf32BE:
        return {4, 4, 3};
    default:
        return {};
    }
}

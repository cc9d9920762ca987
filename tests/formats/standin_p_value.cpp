#include "p_value.h"

#include <QByteArray>
#include <cmath>

// Until the room has its own.
bool isMissing(std::string_view text) {
    for (const std::string_view missing : {"NA", "N/A", "n/a", "na", "nan", "NaN", "-nan", "null",
                                           "NULL", "None", "NONE", ".", "-", "#NA", "NR", ""})
        if (text == missing)
            return true;
    return false;
}

bool readNumber(std::string_view text, bool decimalComma, double& number) {
    QByteArray bytes(text.data(), qsizetype(text.size()));
    if (decimalComma)
        bytes.replace(',', '.');
    bool isNumber = false;
    number = bytes.toDouble(&isNumber);
    return isNumber && std::isfinite(number);
}

PValue readPValue(std::string_view text, bool decimalComma) {
    PValue value;
    value.isBound = text.substr(0, 1) == "<";
    if (value.isBound)
        text.remove_prefix(1);
    if (isMissing(text))
        value.kind = PValue::Kind::Missing;
    else if (readNumber(text, decimalComma, value.p))
        value.kind = PValue::Kind::Number;
    value.isNegative = value.p < 0.0;
    value.negLog10 = -std::log10(value.p);
    return value;
}

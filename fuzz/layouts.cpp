// What understand() makes of any text, against the plain version. Input: the table.

#include "finding.h"
#include "understanding.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const QByteArray table(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size));
    if (!table.isEmpty())
        checkUnderstanding(table, {});
    return 0;
}

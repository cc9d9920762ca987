#include "prepare_report.h"

#include <iterator>

QLatin1String nameOf(DropReason reason) {
    static constexpr const char* names[] = {
        "p-missing",
        "p-zero",
        "p-not-a-number",
        "p-out-of-range",
        "position-missing",
        "position-not-whole",
        "position-not-positive",
        "position-too-large",
        "chromosome-missing",
        "wrong-test",
        "short-line",
        "joined-id-unreadable",
        "no-position-in-table",
        "repeated-header",
        "comment",
        "empty",
        "small-chromosome",
    };
    static_assert(std::size(names) == dropReasonCount);
    return QLatin1String(names[static_cast<int>(reason)]);
}

#include "prepare_report.h"

QLatin1String nameOf(DropReason reason) {
    static constexpr const char* names[dropReasonCount] = {
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
    return QLatin1String(names[static_cast<int>(reason)]);
}

#pragma once

#include "refusal.h"

namespace plain {

// Whether both say the same of a table, which may have several faults: readers need not find them
// in the same order.
bool isSameRefusal(RefusalCode a, RefusalCode b);

} // namespace plain

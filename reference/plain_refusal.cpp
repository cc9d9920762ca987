#include "plain_refusal.h"

namespace plain {

namespace {

// Where a line is no header for one of these, the search goes on, and may end with any fault.
bool letsSearchGoOn(RefusalCode code) {
    return code == RefusalCode::NotATable || code == RefusalCode::NoChromosome ||
           code == RefusalCode::NoPosition || code == RefusalCode::NoPValue ||
           code == RefusalCode::UnknownColumn;
}

// Which of several faults of the values is found first is nobody's business.
bool isByValues(RefusalCode code) {
    return code >= RefusalCode::GeneticMap && code <= RefusalCode::ZeroP;
}

} // namespace

bool isSameRefusal(RefusalCode a, RefusalCode b) {
    return a == b || letsSearchGoOn(a) || letsSearchGoOn(b) || (isByValues(a) && isByValues(b));
}

} // namespace plain

#pragma once

#include <optional>
#include <string_view>

// Chromosome and position that stand in a marker's name: 1:15791:C:T, chr1_13550_G_A_b38, 10:49413.
struct JoinedId {
    std::string_view chromosome; // as it stands, with its "chr"
    std::string_view position;   // digits
};

// The chromosome is one or two digits with perhaps one letter of A to D, L and R after them; or one
// of X Y Z W XY M MT; each perhaps after "chr"; or "chr" and anything; or NC_ and digits, perhaps
// with a version. ":", "_" or "-" follow, then a whole number, then nothing or one of ":_-/" and
// anything. Nothing is returned for any other text. The views point into `text`.
std::optional<JoinedId> readJoinedId(std::string_view text);

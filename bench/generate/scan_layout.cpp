#include "generate/scan_layout.h"

ScanLayout plainLayout() {
    return {.name = "plain", .description = "as PLINK 2 writes it"};
}

std::vector<ScanLayout> oddLayouts() {
    using Labels = ScanLayout::Labels;
    constexpr int longAllele = 100'000;
    return {
        {.name = "rsid_first",
         .description = "marker names left of the chromosome: as many labels as lines",
         .hasLeadingId = true},
        {.name = "label_per_line",
         .description = "another label in each line",
         .labels = Labels::OneAMarker},
        {.name = "blocks_of_one",
         .description = "two labels in turn: blocks of one line",
         .labels = Labels::TwoInTurn},
        {.name = "carriage_returns",
         .description = "lines end with carriage return and line feed",
         .lineEnd = "\r\n"},
        {.name = "commas", .description = "commas", .delimiter = ','},
        {.name = "44_columns", .description = "44 columns", .columns = 44, .plainLines = 6},
        {.name = "long_lines",
         .description = "lines of 100 kB",
         .alleleLength = longAllele,
         .plainLines = longAllele / 57},
        {.name = "one_line", .description = "no line end at all", .lineEnd = ""},
        {.name = "unsorted", .description = "positions in no order", .isSorted = false},
        {.name = "17_digits", .description = "p with 17 digits", .digits = 17},
    };
}

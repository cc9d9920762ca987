#pragma once

#include <string_view>

// The subfield that FORMAT names, of a sample's field: "LP" in "ES:SE:LP" and "0.1:0.2:3.5" is 3.5.
// Empty where FORMAT does not name it or the sample's field is too short.
std::string_view vcfSubfield(std::string_view format, std::string_view sample,
                             std::string_view name);

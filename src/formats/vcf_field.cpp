#include "vcf_field.h"

namespace {

// Cuts the text up to the next colon off the text.
std::string_view takePiece(std::string_view& text) {
    const size_t colon = text.find(':');
    const std::string_view piece = text.substr(0, colon);
    text.remove_prefix(colon == std::string_view::npos ? text.size() : colon + 1);
    return piece;
}

} // namespace

std::string_view vcfSubfield(std::string_view format, std::string_view sample,
                             std::string_view name) {
    while (!format.empty()) {
        const std::string_view value = takePiece(sample);
        if (takePiece(format) == name)
            return value;
    }
    return {};
}

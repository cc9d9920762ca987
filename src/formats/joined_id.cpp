#include "joined_id.h"

#include "characters.h"

#include <algorithm>

namespace {

constexpr std::string_view separators = ":_-";
constexpr std::string_view endsOfPosition = ":_-/";

bool startsWith(std::string_view text, std::string_view upperPrefix) {
    return text.size() >= upperPrefix.size() &&
           std::equal(upperPrefix.begin(), upperPrefix.end(), text.begin(),
                      [](char prefix, char c) { return prefix == upper(c); });
}

bool equals(std::string_view text, std::string_view upperText) {
    return text.size() == upperText.size() && startsWith(text, upperText);
}

bool isNumbered(std::string_view text) {
    const auto* const letters = std::find_if_not(text.begin(), text.end(), isDigit);
    const auto digits = letters - text.begin();
    const std::string_view rest = text.substr(size_t(digits));
    return (digits == 1 || digits == 2) &&
           (rest.empty() || (rest.size() == 1 && std::string_view("ABCDLR").find(upper(rest[0])) !=
                                                     std::string_view::npos));
}

bool isLettered(std::string_view text) {
    const auto names = {"X", "Y", "Z", "W", "XY", "M", "MT"};
    return std::any_of(names.begin(), names.end(),
                       [&](const char* name) { return equals(text, name); });
}

bool isAccession(std::string_view text) {
    return text.size() > 3 && startsWith(text, "NC_") &&
           std::all_of(text.begin() + 3, text.end(), [](char c) { return isDigit(c) || c == '.'; });
}

bool isChromosome(std::string_view text) {
    return isNumbered(text) || isLettered(text) || isAccession(text) ||
           (text.size() > 3 && startsWith(text, "CHR"));
}

// The number that the text starts with, if the name can go on after it.
std::optional<std::string_view> positionAt(std::string_view text) {
    const auto* const end = std::find_if_not(text.begin(), text.end(), isDigit);
    const auto digits = size_t(end - text.begin());
    if (digits == 0 || (end != text.end() && endsOfPosition.find(*end) == std::string_view::npos))
        return std::nullopt;
    return text.substr(0, digits);
}

} // namespace

std::optional<JoinedId> readJoinedId(std::string_view text) {
    size_t at = text.find_first_of(separators);
    for (; at != std::string_view::npos; at = text.find_first_of(separators, at + 1)) {
        const std::optional<std::string_view> position = positionAt(text.substr(at + 1));
        if (position && isChromosome(text.substr(0, at)))
            return JoinedId{text.substr(0, at), *position};
    }
    return std::nullopt;
}

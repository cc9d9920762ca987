#include "place_title.h"

#include "title_table.h"
#include "titles.h"

#include <iterator>

namespace {

using title_table::RankedTitle;

template <size_t Count>
std::optional<int> rankIn(const RankedTitle (&list)[Count], std::string_view title) {
    for (const RankedTitle& entry : list)
        if (entry.title == title)
            return entry.rank;
    return std::nullopt;
}

// The part of a place title that stands in the lists, without what marks the family.
std::optional<QByteArray> withoutFamily(const QByteArray& title,
                                        const title_table::Family& family) {
    if (family.prefixes[0].empty() && family.suffix.empty())
        return title;
    for (const std::string_view prefix : family.prefixes)
        if (!prefix.empty() && title.startsWith(bytesOf(prefix)))
            return title.mid(qsizetype(prefix.size()));
    if (!family.suffix.empty() && title.endsWith(bytesOf(family.suffix)))
        return title.chopped(qsizetype(family.suffix.size()));
    return std::nullopt;
}

bool isListed(const QByteArray& title, PlaceColumnTitle& place) {
    const std::string_view text = viewOf(title);
    place.isZeroBased = contains(title_table::zeroBasedPositions, text);
    const std::optional<int> chromosome = rankIn(title_table::chromosomes, text);
    const std::optional<int> position =
        place.isZeroBased ? 1 : rankIn(title_table::positions, text);
    place.isChromosome = chromosome.has_value();
    place.rank = chromosome.value_or(position.value_or(0));
    return chromosome || position;
}

} // namespace

std::optional<PlaceColumnTitle> readPlaceTitle(std::string_view raw) {
    const PlaceTitle title = placeTitle(raw);
    if (title.title == bytesOf(title_table::exactPosition) &&
        normalTitle(raw) != bytesOf(title_table::exactPosition))
        return std::nullopt;
    PlaceColumnTitle place;
    place.build = title.build;
    place.stem = title.title;
    // A plain title first: "snpchr" of another family is none in the lists.
    for (const int family : {title_table::plainFamily, 0, 2, 3, 4}) {
        place.family = family;
        const auto rest = withoutFamily(title.title, title_table::families[family]);
        if (rest && isListed(*rest, place))
            return place;
    }
    return std::nullopt;
}

std::optional<int> joinedOrder(std::string_view raw) {
    const QByteArray title = placeTitle(raw).title;
    int order = 0;
    for (const title_table::JoinedTitle& entry : title_table::joinedTitles) {
        const QByteArray text = bytesOf(entry.title);
        if (title == text || (entry.isPrefix && title.startsWith(text)))
            return order;
        ++order;
    }
    return std::nullopt;
}

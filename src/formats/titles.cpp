#include "titles.h"

#include "title_table.h"

namespace {

constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

bool isKept(char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || static_cast<unsigned char>(c) > 0x7f;
}

QByteArray withoutQuotes(const QByteArray& text) {
    for (const char quote : {'"', '\''})
        if (text.size() > 1 && text.front() == quote && text.back() == quote)
            return text.mid(1, text.size() - 2).trimmed();
    return text;
}

// Removes each name of a build; the last one found is the title's.
void removeBuilds(PlaceTitle& place) {
    for (const title_table::Build& build : title_table::builds) {
        const size_t at = viewOf(place.title).find(build.piece);
        if (at == std::string_view::npos)
            continue;
        place.title.remove(qsizetype(at), qsizetype(build.piece.size()));
        place.build = bytesOf(build.build);
    }
}

void removeBareBuild(PlaceTitle& place) {
    for (const std::string_view build : title_table::bareBuilds) {
        if (!viewOf(place.title).ends_with(build))
            continue;
        const QByteArray rest = place.title.chopped(qsizetype(build.size()));
        for (const std::string_view word : title_table::wordsBeforeBareBuild)
            if (viewOf(rest).ends_with(word))
                place = {rest, bytesOf(build)};
    }
}

} // namespace

QByteArray bareTitle(std::string_view raw) {
    QByteArray text = bytesOf(raw);
    if (text.startsWith(bytesOf(byteOrderMark)))
        text.remove(0, qsizetype(byteOrderMark.size()));
    return withoutQuotes(text.trimmed());
}

QByteArray normalTitle(std::string_view raw) {
    QByteArray normal;
    for (const char c : bareTitle(raw).toLower()) {
        if (isKept(c))
            normal += c;
        else if (!normal.isEmpty() && !normal.endsWith('_'))
            normal += '_';
    }
    if (normal.endsWith('_'))
        normal.chop(1);
    return normal;
}

QList<QByteArray> titleWords(std::string_view raw) {
    const QByteArray normal = normalTitle(raw);
    return normal.isEmpty() ? QList<QByteArray>() : normal.split('_');
}

PlaceTitle placeTitle(std::string_view raw) {
    PlaceTitle place{normalTitle(raw), {}};
    removeBuilds(place);
    place.title.replace("_", "");
    removeBareBuild(place);
    return place;
}

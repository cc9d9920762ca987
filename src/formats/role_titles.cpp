#include "role_titles.h"

#include "p_title.h"
#include "place_title.h"
#include "title_table.h"
#include "titles.h"

#include <algorithm>

namespace {

int nameColumn(const QList<QByteArray>& titles) {
    for (const std::string_view name : title_table::names)
        for (int column = 0; column < titles.size(); ++column)
            if (placeTitle(viewOf(titles[column])).title == bytesOf(name))
                return column;
    return -1;
}

bool says(const QList<QByteArray>& titles, bool chromosome) {
    return std::any_of(titles.begin(), titles.end(), [&](const QByteArray& title) {
        const auto place = readPlaceTitle(viewOf(title));
        return place && place->isChromosome == chromosome;
    });
}

} // namespace

void chooseName(const HeadTable& table, const NamedColumns& named, ColumnChoice& choice) {
    choice.name = named.name >= 0 ? named.name : nameColumn(table.titles());
    if (choice.name < 0)
        choice.name = choice.joined;
    if (choice.name >= 0)
        choice.notes += {Role::Name, choice.name, table.titles().value(choice.name),
                         named.name >= 0 ? QStringLiteral("named by --name")
                                         : QStringLiteral("names the markers")};
}

bool saysChromosome(const QList<QByteArray>& titles) {
    return says(titles, true);
}

bool saysPosition(const QList<QByteArray>& titles) {
    return says(titles, false);
}

bool saysName(const QList<QByteArray>& titles) {
    return nameColumn(titles) >= 0;
}

bool saysPValue(const QList<QByteArray>& titles) {
    return std::any_of(titles.begin(), titles.end(),
                       [](const QByteArray& raw) { return readPTitle(viewOf(raw)).has_value(); });
}

bool isOfPlink(const QList<QByteArray>& titles) {
    const bool isSecond = titles.contains("OBS_CT") && titles.contains("#CHROM");
    return isSecond ||
           (titles.value(0) == "CHR" && titles.contains("SNP") && titles.contains("BP") &&
            (titles.contains("NMISS") || titles.contains("F_U") || titles.contains("TEST")));
}

bool isOfSsf(const QList<QByteArray>& titles) {
    return titles.contains("base_pair_location") && titles.contains("effect_allele");
}

#include "role_titles.h"

#include "p_title.h"
#include "place_title.h"
#include "title_table.h"
#include "titles.h"

#include <algorithm>
#include <iterator>

namespace {

int nameColumn(const QList<QByteArray>& titles) {
    QList<QByteArray> placeTitles;
    for (const QByteArray& title : titles)
        placeTitles.append(placeTitle(viewOf(title)).title);
    for (const std::string_view name : title_table::names)
        if (const qsizetype column = placeTitles.indexOf(bytesOf(name)); column >= 0)
            return int(column);
    return -1;
}

bool says(const QList<QByteArray>& titles, bool chromosome) {
    return std::any_of(titles.begin(), titles.end(), [&](const QByteArray& title) {
        const auto place = readPlaceTitle(viewOf(title));
        return place && place->isChromosome == chromosome;
    });
}

bool hasTitle(const QList<QByteArray>& titles, std::string_view normal) {
    return std::any_of(titles.begin(), titles.end(), [normal](const QByteArray& title) {
        return normalTitle(viewOf(title)) == bytesOf(normal);
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

bool areOfPlink(const QList<QByteArray>& titles) {
    return std::any_of(std::begin(title_table::plink), std::end(title_table::plink),
                       [&](const auto& together) {
                           return std::all_of(std::begin(together), std::end(together),
                                              [&](std::string_view title) {
                                                  return title.empty() || hasTitle(titles, title);
                                              });
                       });
}

bool areOfSsf(const QList<QByteArray>& titles) {
    return hasTitle(titles, title_table::ssf);
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

#pragma once

#include <QByteArray>
#include <optional>
#include <string_view>

// What the title of a chromosome or position column says.
struct PlaceColumnTitle {
    bool isChromosome = false; // else a position
    int family = 0;            // index into title_table::families
    int rank = 0;              // within the family, 0 before 1
    QByteArray build;          // "36", "37" ..., empty where the title names none
    QByteArray stem;           // the place title: equal for titles that differ in the build alone
    bool isZeroBased = false;  // positions are counted from 0
};

// Nothing for any other title.
std::optional<PlaceColumnTitle> readPlaceTitle(std::string_view raw);

// The place of a title in the order in which joined ids are looked for; nothing for titles that do
// not name markers or places.
std::optional<int> joinedOrder(std::string_view raw);

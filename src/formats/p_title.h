#pragma once

#include <QByteArray>
#include <QList>
#include <optional>
#include <string_view>

// What the title of a p column, or of a column of its logarithm, says.
struct PTitle {
    enum class Tier { Primary, Secondary, Never };

    bool isLog = false;
    bool saysMinus = false; // of a logarithm: its sign is turned
    Tier tier = Tier::Primary;
    int rank = 0;            // within the tier, 0 before 1
    QList<QByteArray> words; // what else the title says, sorted
    QByteArray reason;       // the word that decided the tier, where it is not Primary
};

// Rank 0 says p alone, rank 1 has words that make it no special one, rank 2 any other, and rank 3
// is second-best among the second-best. Nothing for a title that does not say p.
std::optional<PTitle> readPTitle(std::string_view raw);

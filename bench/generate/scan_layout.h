#pragma once

#include <cstdint>
#include <string>
#include <vector>

class QIODevice;

// How a generated file looks. As it stands: what PLINK 2 writes for a regression (.glm), nine
// columns, about 57 bytes a line, the chromosomes one after the other and their positions
// ascending.
struct ScanLayout {
    enum class Labels { Chromosomes, OneAMarker, TwoInTurn };

    std::string name;
    std::string description;
    Labels labels = Labels::Chromosomes;
    int chromosomes = 23;
    char delimiter = '\t';
    std::string lineEnd = "\n"; // may be empty: then all is one line
    bool hasLeadingId = false;  // a column of marker names before the chromosome, titled rsID
    bool isSorted = true;
    int digits = 6;       // of the p-values
    int columns = 9;      // more than nine are filled with numbers
    int alleleLength = 1; // characters in the column ALT
    int plainLines = 1;   // that are about as long as one such line
};

// The layout that all others are compared with, and those on which a reader could stumble.
ScanLayout plainLayout();
std::vector<ScanLayout> oddLayouts();

// Writes a file of so many markers, the same for the same seed. False where it could not be
// written.
bool writeScan(QIODevice& device, const ScanLayout& layout, std::int64_t markers,
               std::uint64_t seed);

#pragma once

#include <cstdint>
#include <string>
#include <vector>

class QIODevice;

// The layout of a generated file. The defaults are what PLINK 2 writes for a regression (.glm):
// nine columns, about 57 bytes per line, chromosomes one after the other, positions ascending.
struct ScanLayout {
    enum class Labels { Chromosomes, OneAMarker, TwoInTurn };

    std::string name;
    std::string description;
    Labels labels = Labels::Chromosomes;
    int chromosomes = 23;
    char delimiter = '\t';
    std::string lineEnd = "\n"; // where empty, the whole file is one line
    bool hasLeadingId = false;  // a column of marker names before the chromosome, titled rsID
    bool isSorted = true;
    int digits = 6;       // of the p-values
    int columns = 9;      // nine, then columns of random numbers
    int alleleLength = 1; // characters in the column ALT
    int plainLines = 1;   // of the plain layout that have the length of one line of this
};

// The layout that all others are compared with, and those that could slow a reader down.
ScanLayout plainLayout();
std::vector<ScanLayout> oddLayouts();

// Writes a file of so many markers. Equal seeds give equal bytes, on any platform. False on a write
// error.
bool writeScan(QIODevice& device, const ScanLayout& layout, std::int64_t markers,
               std::uint64_t seed);

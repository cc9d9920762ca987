#pragma once

#include "prepare_options.h"

#include <QByteArray>
#include <QList>
#include <string_view>
#include <utility>

// One key for all spellings of a chromosome: chr1, 1, 01, Chr1 and CHR01 are "1", and M is MT. Any
// other label is its own key, in upper case and without a "chr" before it.
QByteArray chromosomeKey(std::string_view label);

// True where the chromosome of `a` comes before that of `b`: an optional "chr" and case are
// ignored; numbers first (1, 1A, 1B, 2, 2L, 10), then X Y Z W XY MT, then text with its numbers
// compared as numbers (sca2 before sca10), then unplaced ones (0, Un, NA). A strict weak order, in
// which only labels with the same key are equal.
bool isBefore(std::string_view a, std::string_view b);

// A label to be compared many times: `a < b` is isBefore(a, b).
class ComparedLabel {
public:
    explicit ComparedLabel(std::string_view label);
    bool operator<(const ComparedLabel& other) const;

private:
    QByteArray m_key;
    std::pair<int, size_t> m_group; // what decides before the key does
};

// True for 0, Un, NA and the like, which stand for no chromosome in particular.
bool isUnplaced(std::string_view label);

// How the labels of a table are written: index-aligned with `labels`, which are all that occur.
// `isPlink` and `isSsf` say what kind of table it is, which decides what 25 means.
//
// Keep: the spelling that comes first. Plain: without "chr"; accessions of human chromosomes
// (NC_000001.11) and the numbers 23 to 26 by what they mean; M is MT. Chr: the same with "chr", as
// chr1, chrX and chrM; other sequences keep their names.
struct NamedChromosomes {
    QList<QByteArray> names;
    QList<QString> remarks; // each translation, for the report
};
NamedChromosomes nameChromosomes(const QList<QByteArray>& labels, ChromosomeNames names,
                                 bool isPlink, bool isSsf);

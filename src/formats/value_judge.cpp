#include "value_judge.h"

#include "column_option.h"

#include <cmath>
#include <limits>

namespace {

// More than 1 in 100.
bool isMuch(qint64 part, qint64 whole) {
    return part * 100 > whole;
}

QString column(const Understanding& table, int column) {
    return columnText(table.format.titles, column);
}

// `message` has %1 for the column.
Refusal aboutColumn(RefusalCode code, const QString& message, const Understanding& table, int at,
                    const QList<QByteArray>& options) {
    return {code, message.arg(column(table, at)), {}, options};
}

Refusal noNumbers(const Understanding& table, int p) {
    return aboutColumn(
        RefusalCode::NoPValue,
        QStringLiteral("Most values in %1 are no numbers, so it is no column of p-values. Name "
                       "the right one with --p."),
        table, p, {"--p COLUMN"});
}

std::optional<Refusal> judgeP(const ValueCounts& counts, const Understanding& table) {
    const int p = table.columns.p;
    if (counts.pTexts > counts.pNumbers)
        return noNumbers(table, p);
    if (counts.pNegative > 0 && counts.pPositive == 0)
        return aboutColumn(RefusalCode::LooksLikeLog,
                           QStringLiteral("All values in %1 are at or below 0: it looks like a "
                                          "logarithm of p. Say --p-is log10, or --p-is ln if it is "
                                          "the natural one."),
                           table, p, {"--p-is log10", "--p-is ln"});
    if (isMuch(counts.pAboveOne, counts.pNumbers))
        return aboutColumn(RefusalCode::LooksLikeNegLog10,
                           QStringLiteral("More than 1 in 100 values in %1 are above 1: it looks "
                                          "like -log10 p. Say --p-is neglog10 if it is."),
                           table, p, {"--p-is neglog10"});
    if (isMuch(counts.pAboveOne + counts.pNegative, counts.pNumbers))
        return aboutColumn(RefusalCode::OutOfRange,
                           QStringLiteral("More than 1 in 100 values in %1 lie outside 0 to 1, so "
                                          "they are no p-values."),
                           table, p, {"--p COLUMN"});
    return std::nullopt;
}

Refusal mixedSigns(const Understanding& table) {
    return aboutColumn(
        RefusalCode::MixedSigns,
        QStringLiteral("%1 has values above 0 and below 0, so it is no logarithm of p. "
                       "Name the right column with --p."),
        table, table.columns.logP, {"--p COLUMN"});
}

Refusal turnedSigns(const Understanding& table) {
    return aboutColumn(
        RefusalCode::LooksLikeLog,
        QStringLiteral("All values in %1 are at or below 0, so they are not -log10 p. "
                       "Say --p-is log10, or --p-is ln if it is the natural one."),
        table, table.columns.logP, {"--p-is log10", "--p-is ln"});
}

Refusal notBelowZero(const Understanding& table) {
    return aboutColumn(
        RefusalCode::LooksLikeNegLog10,
        QStringLiteral("The values in %1 are above 0, so they look like -log10 p. Say "
                       "--p-is neglog10 if they are."),
        table, table.columns.logP, {"--p-is neglog10"});
}

std::optional<Refusal> judgeLog(const ValueCounts& counts, const Understanding& table) {
    if (counts.logTexts > counts.logNumbers)
        return noNumbers(table, table.columns.logP);
    if (counts.logNegative > 0 && counts.logPositive > 0)
        return mixedSigns(table);
    if (table.columns.logScale == PScale::NegLog10)
        return counts.logNegative > 0 ? std::optional(turnedSigns(table)) : std::nullopt;
    return counts.logPositive > 0 ? std::optional(notBelowZero(table)) : std::nullopt;
}

Refusal disagreement(const ValueCounts& counts, const Understanding& table) {
    const ColumnChoice& columns = table.columns;
    Refusal refusal{RefusalCode::PairDisagrees, {}, {}, {}, counts.firstDisagreeingLine};
    refusal.message =
        QStringLiteral("%1 and %2 disagree on more than 1 in 100 lines, first on line "
                       "%3: %4. Say which to take with --p and --p-is.")
            .arg(column(table, columns.p), column(table, columns.logP),
                 QString::number(counts.firstDisagreeingLine), counts.firstDisagreeing);
    for (const auto& [at, scale] :
         {std::pair(columns.p, " --p-is p"), std::pair(columns.logP, " --p-is neglog10")}) {
        refusal.candidates += table.format.titles.value(at);
        refusal.options += optionFor("--p", table.format.titles, at) + scale;
    }
    return refusal;
}

std::optional<Refusal> judgePosition(const ValueCounts& counts, const Understanding& table) {
    const int position = table.columns.position;
    if (isMuch(counts.positionsFractional, counts.positions))
        return aboutColumn(
            RefusalCode::GeneticMap,
            QStringLiteral("The values in %1 are not whole numbers: they look like a "
                           "genetic map, not base pairs. Name the right column with "
                           "--position, or give a table with --positions FILE."),
            table, position, {"--position COLUMN", "--positions FILE"});
    if (counts.positionTexts * 2 > counts.positions)
        return aboutColumn(RefusalCode::NoPosition,
                           QStringLiteral("Most values in %1 are no numbers, so it is no column of "
                                          "positions. Name the right one with --position."),
                           table, position, {"--position COLUMN"});
    return std::nullopt;
}

Refusal noChromosomes(const Understanding& table) {
    return aboutColumn(
        RefusalCode::NoChromosome,
        QStringLiteral("No line has a chromosome in %1. Name another column with --chromosome or, "
                       "for a table of one chromosome, say --chromosome-value NAME."),
        table, table.columns.chromosome, {"--chromosome COLUMN", "--chromosome-value NAME"});
}

Refusal likeNames(const ValueCounts& counts, const Understanding& table) {
    const int chromosome = table.columns.chromosome;
    return {
        RefusalCode::LooksLikeNames,
        QStringLiteral("%1 has %2 different texts in %3 lines: they look like marker names, not "
                       "chromosomes. Name the right column with --chromosome, or this one if "
                       "they are scaffolds.")
            .arg(column(table, chromosome), QString::number(*counts.labels),
                 QString::number(counts.chromosomeRows)),
        {},
        {"--chromosome COLUMN", optionFor("--chromosome", table.format.titles, chromosome)}};
}

std::optional<Refusal> judgeChromosome(const ValueCounts& counts, const Understanding& table) {
    if (counts.labels == 0 && counts.rows > 0)
        return noChromosomes(table);
    const bool isSure = table.columns.isChromosomeNamed || table.columns.isPrepared;
    return counts.haveManyLabels() && !isSure ? std::optional(likeNames(counts, table))
                                              : std::nullopt;
}

} // namespace

bool ValueCounts::haveManyLabels() const {
    constexpr qint64 manyLabels = 1'000;
    return labels && *labels > manyLabels && *labels * 2 > chromosomeRows;
}

void ValueCounts::countP(double p, bool isNegative, double negLog10) {
    ++pNumbers;
    pAboveOne += p > largestP ? 1 : 0;
    pNegative += isNegative ? 1 : 0;
    pPositive += !isNegative && std::isfinite(negLog10) ? 1 : 0;
}

void ValueCounts::countLog(double value) {
    const double rounding = std::log10(largestP);
    ++logNumbers;
    logNegative += value < -rounding ? 1 : 0;
    logPositive += value > rounding ? 1 : 0;
}

void ValueCounts::countPair(double p, double negLog10OfP, double negLog10, qint64 line,
                            const QString& texts) {
    if (p <= std::numeric_limits<double>::min()) // tools stop at the smallest normal double, too
        return;
    ++pairsCompared;
    if (!disagree(negLog10OfP, negLog10))
        return;
    if (pairsDisagreeing++ > 0)
        return;
    firstDisagreeingLine = line;
    firstDisagreeing = texts;
}

bool disagree(double negLog10OfP, double negLog10) {
    const double difference = std::abs(negLog10OfP - negLog10);
    return difference > 0.01 && difference > 0.01 * std::abs(negLog10);
}

double negLog10Of(double value, PScale scale) {
    switch (scale) {
    case PScale::P:
        return -std::log10(value);
    case PScale::NegLog10:
        return value;
    case PScale::Log10:
        return -value;
    case PScale::Ln:
        return -value / std::log(10.0);
    }
    return value;
}

std::optional<Refusal> judge(const ValueCounts& counts, const Understanding& table) {
    const ColumnChoice& columns = table.columns;
    if (columns.position >= 0)
        if (std::optional<Refusal> refusal = judgePosition(counts, table))
            return refusal;
    if (columns.chromosome >= 0)
        if (std::optional<Refusal> refusal = judgeChromosome(counts, table))
            return refusal;
    if (columns.p >= 0)
        if (std::optional<Refusal> refusal = judgeP(counts, table))
            return refusal;
    if (columns.logP >= 0)
        if (std::optional<Refusal> refusal = judgeLog(counts, table))
            return refusal;
    if (columns.p >= 0 && columns.logP >= 0 &&
        isMuch(counts.pairsDisagreeing, counts.pairsCompared))
        return disagreement(counts, table);
    return std::nullopt;
}

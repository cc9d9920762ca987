#include "plain_judge.h"

#include "plain_layout.h"

#include <cfloat>
#include <cmath>

namespace plain {

namespace {

constexpr long double rounding = 4.3429426e-7L; // log10 of 1.000001

void judgeP(const QList<Row>& rows, const RowReader& reader) {
    qint64 all = 0, above = 0, below = 0, positive = 0, texts = 0;
    for (const Row& row : rows) {
        const PText p = readP(reader.pText(row));
        const Decimal number = decimal(trimmed(reader.pText(row).remove(u'<').remove(u'=')));
        texts += p.kind == PText::NotANumber ? 1 : 0;
        if (p.kind == PText::Missing || p.kind == PText::NotANumber)
            continue;
        const bool isNegative = number.isNegative && !number.isZero;
        ++all;
        above += p.kind == PText::OutOfRange && !isNegative ? 1 : 0;
        below += isNegative ? 1 : 0;
        positive += !number.isNegative && !number.isZero ? 1 : 0;
    }
    if (texts > all)
        throw Failure{RefusalCode::NoPValue};
    if (below > 0 && positive == 0)
        throw Failure{RefusalCode::LooksLikeLog};
    if (above * 100 > all)
        throw Failure{RefusalCode::LooksLikeNegLog10};
    if ((above + below) * 100 > all)
        throw Failure{RefusalCode::OutOfRange};
}

void judgeLog(const QList<Row>& rows, const RowReader& reader, PScale scale) {
    qint64 numbers = 0, above = 0, below = 0, texts = 0;
    for (const Row& row : rows) {
        const QString text = reader.logText(row);
        const Decimal number = decimal(text);
        numbers += number.isFinite ? 1 : 0;
        texts += !number.isFinite && !isMissing(text) ? 1 : 0;
        above += number.isFinite && number.value > rounding ? 1 : 0;
        below += number.isFinite && number.value < -rounding ? 1 : 0;
    }
    if (texts > numbers)
        throw Failure{RefusalCode::NoPValue};
    if (above > 0 && below > 0)
        throw Failure{RefusalCode::MixedSigns};
    if (scale == PScale::NegLog10 ? below > 0 : above > 0)
        throw Failure{RefusalCode::LooksLikeLog};
}

void judgePair(const QList<Row>& rows, const RowReader& reader, PScale scale) {
    qint64 all = 0, apart = 0;
    for (const Row& row : rows) {
        const QString text = reader.pText(row);
        const Decimal p = decimal(text), log = decimal(reader.logText(row));
        if (!p.isNumber || p.isNegative || static_cast<double>(p.value) <= DBL_MIN || !log.isFinite)
            continue;
        ++all;
        const long double unit = scale == PScale::Ln ? 0.434294481903251827651L : 1;
        const long double negLog10 = (scale == PScale::NegLog10 ? 1 : -1) * log.value * unit;
        const long double difference = std::abs(-p.log10 - negLog10);
        apart += difference > 0.01L && difference > 0.01L * std::abs(negLog10) ? 1 : 0;
    }
    if (apart * 100 > all)
        throw Failure{RefusalCode::PairDisagrees};
}

void judgePositions(const QList<Row>& rows, const RowReader& reader, int column) {
    qint64 all = 0, broken = 0, texts = 0;
    for (const Row& row : rows) {
        if (isMissing(row.field(column)))
            continue;
        const Decimal number = reader.positionNumber(row);
        ++all;
        broken += number.isFinite && !number.isWhole() ? 1 : 0;
        texts += number.isFinite ? 0 : 1;
    }
    if (broken * 100 > all)
        throw Failure{RefusalCode::GeneticMap};
    if (texts * 2 > all)
        throw Failure{RefusalCode::NoPosition};
}

void judgeChromosomes(const QList<Row>& rows, const RowReader& reader, const Columns& columns) {
    bool hasChromosome = false, hasP = false;
    for (const Row& row : rows) {
        hasChromosome |= !isMissing(row.field(columns.chromosome));
        const PText p = readP(reader.pText(row));
        hasP |= columns.p >= 0 && p.kind != PText::Missing && p.kind != PText::NotANumber;
        hasP |= columns.log >= 0 && decimal(reader.logText(row)).isFinite;
    }
    if (hasP && !hasChromosome)
        throw Failure{RefusalCode::NoChromosome};
}

// Where no logarithm is above 0 and one is below, they are log10 p, unless the title says minus.
void findScale(const QList<Row>& rows, const RowReader& reader, Columns& columns) {
    bool isAnyAbove = false, isAnyBelow = false;
    for (const Row& row : rows) {
        const Decimal number = decimal(reader.logText(row));
        isAnyAbove |= number.isFinite && number.value > rounding;
        isAnyBelow |= number.isFinite && number.value < -rounding;
    }
    if (isAnyBelow && !isAnyAbove && !columns.logSaysMinus)
        columns.logScale = PScale::Log10;
}

} // namespace

void judge(const QList<Row>& rows, const RowReader& reader, const Columns& columns) {
    if (columns.position >= 0)
        judgePositions(rows, reader, columns.position);
    if (columns.chromosome >= 0)
        judgeChromosomes(rows, reader, columns);
    if (columns.p >= 0)
        judgeP(rows, reader);
    if (columns.log >= 0 && !columns.isPrepared)
        judgeLog(rows, reader, columns.logScale);
    if (columns.log >= 0 && columns.p >= 0 && !columns.isPrepared)
        judgePair(rows, reader, columns.logScale);
}

void judgeTable(Table& table, QList<Row> rows, const PrepareOptions& options) {
    Columns& columns = table.columns;
    if (columns.isPrepared)
        return;
    rows.removeIf([&](const Row& row) { // short lines count
        return (!row.lineFault.isEmpty() && row.lineFault != u"short-line") ||
               table.isTooLong(row.fields);
    });
    const RowReader reader(table, options);
    if (options.testName && columns.test < 0)
        throw Failure{RefusalCode::UnknownColumn};
    if (columns.log >= 0 && !columns.logScaleIsGiven)
        findScale(rows, reader, columns);
    judge(rows, reader, columns);
}

} // namespace plain

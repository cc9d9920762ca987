#include "p_converter.h"

#include "number_fields.h"
#include "number_text.h"
#include "p_value.h"
#include "titles.h"
#include "vcf_field.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace {

constexpr double largestNegLog10 = 323.306; // of a double that is not 0
constexpr std::string_view infoKey = "LOG10P=";

inline std::string_view fieldOf(const TableRows& rows, int column) {
    return rows.field(static_cast<size_t>(column));
}

void appendLogText(double negLog10, TextBuffer& text) {
    QByteArray number;
    appendNegLog10(negLog10, number);
    text.append(viewOf(number));
}

void appendPText(double negLog10, TextBuffer& text) {
    QByteArray number;
    appendPOfNegLog10(negLog10, number);
    text.append(viewOf(number));
}

// What was written after the last tab.
std::string_view lastField(const TextBuffer& text) {
    return text.view().substr(text.view().rfind('\t') + 1);
}

// The number after "LOG10P=" in a list of keys and values; empty where there is none.
std::string_view infoLog(std::string_view info) {
    const size_t at = info.find(infoKey);
    if (at == std::string_view::npos || (at > 0 && info[at - 1] != ';'))
        return {};
    const std::string_view rest = info.substr(at + infoKey.size());
    return rest.substr(0, rest.find(';'));
}

} // namespace

std::optional<DropReason> PConverter::append(const TableRows& rows, TextBuffer& text) {
    const ColumnChoice& columns = m_table.columns;
    const size_t start = text.size();
    std::optional<DropReason> reason;
    if (columns.isPrepared)
        reason = appendPrepared(rows, text);
    else if (columns.p >= 0)
        reason = appendP(fieldOf(rows, columns.p), rows, text);
    else if (columns.logP >= 0)
        reason = appendLog(logText(rows), rows, text);
    else
        reason = appendFromEffect(rows, text);
    if (reason)
        text.truncate(start);
    return reason;
}

// The plain case: a number that the window reads, above the smallest normal double.
std::optional<DropReason> PConverter::appendP(std::string_view p, const TableRows& rows,
                                              TextBuffer& text) {
    double number = 0.0;
    if (m_table.format.decimalComma || !readReal(p, number) || !(number >= DBL_MIN && number <= 1))
        return appendOddP(p, rows, text);
    const size_t start = text.size();
    const double negLog10 = 0.0 - std::log10(number);
    m_counts.countP(number, false, negLog10);
    if (m_table.columns.logP >= 0)
        comparePair(number, negLog10, p, rows);
    text.appendPadded(p);
    text.append('\t');
    text.setEnd(writeNumber(negLog10, text.room(numberTextRoom)));
    noteSmallest(negLog10, text, start);
    return std::nullopt;
}

std::optional<DropReason> PConverter::appendOddP(std::string_view p, const TableRows& rows,
                                                 TextBuffer& text) {
    const PValue value = readPValue(p, m_table.format.decimalComma);
    if (value.kind == PValue::Kind::Missing)
        return DropReason::PMissing;
    if (value.kind == PValue::Kind::NotANumber) {
        ++m_counts.pTexts;
        return DropReason::PNotANumber;
    }
    m_counts.countP(value.p, value.isNegative, value.negLog10);
    if (value.isNegative || value.p > largestP)
        return DropReason::POutOfRange;
    m_met.bounds += value.isBound ? 1 : 0;
    if (std::isinf(value.negLog10))
        return appendZero(rows, text);
    if (value.p > 1.0) {
        ++m_met.roundedToOne;
        text.append("1\t0");
        return std::nullopt;
    }
    const std::string_view number = value.isBound ? p.substr(p.find_first_not_of("<= ")) : p;
    QByteArray pointed = bytesOf(number);
    if (m_table.format.decimalComma)
        pointed.replace(',', '.');
    if (!readPValue(viewOf(pointed), false).isReadByWindow)
        return appendTiny(value.negLog10, rows, text);
    const size_t start = text.size();
    appendOwnText(number, text);
    text.append('\t');
    appendLogText(value.negLog10, text);
    noteSmallest(value.negLog10, text, start);
    return std::nullopt;
}

// A p-value that is too small for the window's reader: the paired logarithm knows it as well.
std::optional<DropReason> PConverter::appendTiny(double negLog10, const TableRows& rows,
                                                 TextBuffer& text) {
    std::string_view log;
    double paired = 0.0;
    const bool isPaired = pairedLog(rows, log, paired) && paired > 0.0;
    const size_t start = text.size();
    appendPText(isPaired ? paired : negLog10, text);
    text.append('\t');
    if (isPaired)
        appendOwnText(log, text);
    else
        appendLogText(negLog10, text);
    noteBelowSmallest(isPaired ? paired : negLog10, lastField(text), rows.line());
    noteSmallest(isPaired ? paired : negLog10, text, start);
    return std::nullopt;
}

std::optional<DropReason> PConverter::appendZero(const TableRows& rows, TextBuffer& text) {
    std::string_view log;
    double negLog10 = 0.0;
    if (pairedLog(rows, log, negLog10) && negLog10 > 0.0) {
        ++m_met.zeroByLog;
        const size_t start = text.size();
        appendPText(negLog10, text);
        text.append('\t');
        appendOwnText(log, text);
        noteBelowSmallest(negLog10, log, rows.line());
        noteSmallest(negLog10, text, start);
        return std::nullopt;
    }
    if (m_zeroP == ZeroP::Drop)
        return DropReason::PZero;
    ++m_met.zeroBySmallest;
    text.append(zeroPlaceholder);
    return std::nullopt;
}

std::optional<DropReason> PConverter::appendLog(std::string_view log, const TableRows& rows,
                                                TextBuffer& text) {
    double value = 0.0;
    if (isMissing(log))
        return DropReason::PMissing;
    if (!readNumber(log, m_table.format.decimalComma, value)) {
        ++m_counts.logTexts;
        return DropReason::PNotANumber;
    }
    m_counts.countLog(value);
    const PScale scale = m_table.columns.logScale;
    double negLog10 = negLog10Of(value, scale);
    if (negLog10 < -std::log10(largestP))
        return DropReason::POutOfRange;
    if (negLog10 <= 0.0) {
        m_met.roundedToOne += negLog10 < 0.0 ? 1 : 0;
        text.append("1\t");
        appendOwnText(negLog10 < 0.0 || scale == PScale::Ln || log.starts_with('-') ? "0" : log,
                      text);
        return std::nullopt;
    }
    const size_t start = text.size();
    appendPText(negLog10, text);
    text.append('\t');
    if (scale == PScale::Ln)
        appendLogText(negLog10, text);
    else
        appendOwnText(scale == PScale::Log10 ? log.substr(1) : log, text);
    noteBelowSmallest(negLog10, lastField(text), rows.line());
    noteSmallest(negLog10, text, start);
    return std::nullopt;
}

std::optional<DropReason> PConverter::appendFromEffect(const TableRows& rows, TextBuffer& text) {
    const ColumnChoice& columns = m_table.columns;
    const bool isComma = m_table.format.decimalComma;
    double z = 0.0, error = 1.0;
    const std::string_view effect = fieldOf(rows, columns.z >= 0 ? columns.z : columns.beta);
    const std::string_view divisor = columns.z >= 0 ? "1" : fieldOf(rows, columns.standardError);
    if (isMissing(effect) || isMissing(divisor))
        return DropReason::PMissing;
    if (!readNumber(effect, isComma, z) || !readNumber(divisor, isComma, error) || error <= 0.0)
        return DropReason::PNotANumber;
    const double negLog10 = negLog10OfZ(z / error);
    const size_t start = text.size();
    appendPText(negLog10, text);
    text.append('\t');
    appendLogText(negLog10, text);
    noteBelowSmallest(negLog10, lastField(text), rows.line());
    noteSmallest(negLog10, text, start);
    return std::nullopt;
}

std::optional<DropReason> PConverter::appendPrepared(const TableRows& rows, TextBuffer& text) {
    const std::string_view p = fieldOf(rows, m_table.columns.p);
    const std::string_view log = fieldOf(rows, m_table.columns.logP);
    double number = 0.0, negLog10 = 0.0;
    if (!readReal(p, number) || !(number > 0.0 && number <= 1.0) ||
        !readNumber(log, false, negLog10))
        return appendOddP(p, rows, text);
    m_counts.countP(number, false, negLog10);
    const size_t start = text.size();
    text.appendPadded(p);
    text.append('\t');
    text.appendPadded(log);
    noteSmallest(negLog10, text, start);
    return std::nullopt;
}

// A number as IN writes it, with a decimal point.
void PConverter::appendOwnText(std::string_view number, TextBuffer& text) const {
    QByteArray own = bytesOf(number);
    if (m_table.format.decimalComma)
        own.replace(',', '.');
    text.append(viewOf(own));
}

void PConverter::setSmallest(double negLog10, std::string_view text) {
    m_smallest = negLog10;
    m_smallestText = bytesOf(text);
}

void PConverter::noteBelowSmallest(double negLog10, std::string_view text, qint64 line) {
    if (negLog10 <= largestNegLog10)
        return;
    ++m_met.belowSmallest;
    double strongest = 0.0;
    readNumber(viewOf(m_met.strongest), false, strongest);
    if (negLog10 <= strongest)
        return;
    m_met.strongest = bytesOf(text);
    m_met.strongestLine.line = line;
}

void PConverter::comparePair(double p, double negLog10OfP, std::string_view text,
                             const TableRows& rows) {
    std::string_view log;
    double negLog10 = 0.0;
    if (!pairedLog(rows, log, negLog10))
        return;
    const bool isFirst = m_counts.pairsDisagreeing == 0 && disagree(negLog10OfP, negLog10);
    const QString texts = isFirst ? QString::fromUtf8(bytesOf(text)) + QStringLiteral(" and ") +
                                        QString::fromUtf8(bytesOf(log))
                                  : QString();
    m_counts.countPair(p, negLog10OfP, negLog10, rows.line(), texts);
}

std::string_view PConverter::logText(const TableRows& rows) const {
    const ColumnChoice& columns = m_table.columns;
    const std::string_view field = fieldOf(rows, columns.logP);
    return columns.format < 0 ? field : vcfSubfield(fieldOf(rows, columns.format), field, "LP");
}

bool PConverter::pairedLog(const TableRows& rows, std::string_view& text, double& negLog10) const {
    const ColumnChoice& columns = m_table.columns;
    if (columns.logP < 0 && columns.info < 0)
        return false;
    text = columns.logP >= 0 ? logText(rows) : infoLog(rows.fieldOrNone(columns.info));
    double value = 0.0;
    if (isMissing(text) || !readNumber(text, m_table.format.decimalComma, value))
        return false;
    const PScale scale = columns.logP >= 0 ? columns.logScale : PScale::NegLog10;
    negLog10 = negLog10Of(value, scale);
    if (scale == PScale::Log10 && text.starts_with('-'))
        text.remove_prefix(1);
    return scale != PScale::Ln;
}

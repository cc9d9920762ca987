#include "generate/scan_layout.h"

#include <QByteArray>
#include <QIODevice>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <random>

namespace {

constexpr int longestChromosome = 240'000'000; // base pairs
constexpr int plainColumns = 9;

class ScanWriter {
public:
    ScanWriter(QIODevice& device, const ScanLayout& layout, std::int64_t markers,
               std::uint64_t seed)
        : m_device(device), m_layout(layout), m_random(seed), m_markers(markers),
          m_perChromosome(markers / layout.chromosomes + 1),
          m_allele(static_cast<size_t>(layout.alleleLength), 'G') {}

    bool write() {
        appendHeader();
        for (m_marker = 0; m_marker < m_markers; ++m_marker) {
            appendLine();
            if (m_block.size() > blockSize && !flush())
                return false;
        }
        return flush();
    }

private:
    static constexpr qsizetype blockSize = 256 * 1024;

    bool flush() {
        const bool isWritten = m_device.write(m_block) == m_block.size();
        m_block.resize(0);
        return isWritten;
    }

    // Not a standard distribution: their results differ between standard libraries.
    double fraction() { return static_cast<double>(m_random() >> 11) * 0x1p-53; }
    std::int64_t below(std::int64_t end) {
        return static_cast<std::int64_t>(m_random() % static_cast<std::uint64_t>(end));
    }
    double aroundZero() { return fraction() + fraction() + fraction() - 1.5; }

    void append(std::string_view text) {
        m_block.append(text.data(), static_cast<qsizetype>(text.size()));
        m_block.append(m_layout.delimiter);
    }
    template <typename... Form>
    void appendNumber(Form... form) {
        char text[32];
        append({text, std::to_chars(text, text + sizeof text, form...).ptr});
    }
    void appendReal(double number, int digits = 6) {
        appendNumber(number, std::chars_format::general, digits);
    }
    void appendName() {
        m_block.append("rs");
        appendNumber(m_layout.hasLeadingId ? m_marker : 1000 + below(100'000'000));
    }
    void endLine() {
        m_block.chop(1);
        m_block.append(m_layout.lineEnd.data(), static_cast<qsizetype>(m_layout.lineEnd.size()));
        if (m_layout.lineEnd.empty())
            m_block.append(m_layout.delimiter);
    }

    void appendHeader() {
        if (m_layout.hasLeadingId)
            append("rsID");
        for (const char* title : {"#CHROM", "POS", "ID", "REF", "ALT", "A1", "BETA", "SE"})
            append(title);
        for (int column = plainColumns; column < m_layout.columns; ++column)
            append("INFO");
        append("P");
        endLine();
    }

    void appendLabel() {
        if (m_layout.labels == ScanLayout::Labels::Chromosomes)
            appendNumber(1 + m_marker / m_perChromosome);
        else if (m_layout.labels == ScanLayout::Labels::TwoInTurn)
            appendNumber(1 + m_marker % 2);
        else
            appendNumber(1 + m_marker);
    }

    std::int64_t nextPosition() {
        if (!m_layout.isSorted)
            return 1 + below(longestChromosome);
        if (m_marker % m_perChromosome == 0)
            m_position = 0;
        return m_position +=
               1 + below(std::max<std::int64_t>(2 * longestChromosome / m_perChromosome - 1, 1));
    }

    void appendLine() {
        if (m_layout.hasLeadingId)
            appendName();
        appendLabel();
        appendNumber(nextPosition());
        appendName();
        append("A");
        append(m_allele);
        append("G");
        appendReal(0.01 * aroundZero());
        appendReal(0.01 + 0.001 * aroundZero());
        for (int column = plainColumns; column < m_layout.columns; ++column)
            appendReal(fraction());
        appendReal(pValue(), m_layout.digits);
        endLine();
    }

    // Three markers in a thousand are far more significant than chance would make them.
    double pValue() {
        const double p = fraction() + 0x1p-60;
        return below(1000) < 3 ? std::pow(p, 8.0) : p;
    }

    QIODevice& m_device;
    const ScanLayout& m_layout;
    std::mt19937_64 m_random;
    const std::int64_t m_markers;
    const std::int64_t m_perChromosome;
    const std::string m_allele;
    QByteArray m_block;
    std::int64_t m_marker = 0;
    std::int64_t m_position = 0;
};

} // namespace

bool writeScan(QIODevice& device, const ScanLayout& layout, std::int64_t markers,
               std::uint64_t seed) {
    return ScanWriter(device, layout, markers, seed).write();
}

#include "window_reading.h"

#include "association_file.h"
#include "excerpt.h"
#include "p_value.h"
#include "utf8.h"

#include <QHash>
#include <algorithm>
#include <cmath>

namespace {

// Below it, a table that the window saves has 0, which the window skips.
constexpr double smallestSavedP = 1e-308;

Finding& findingOf(QList<Finding>& findings, FindingCode code) {
    const auto found = std::find_if(findings.begin(), findings.end(),
                                    [&](const Finding& finding) { return finding.code == code; });
    if (found != findings.end())
        return *found;
    findings.append(Finding{code, 0, {}, 0});
    return findings.last();
}

// A whole number that is too large for an int.
bool isLargeInteger(const QString& text) {
    bool isWhole = false;
    text.toLongLong(&isWhole);
    return isWhole;
}

FindingCode codeOf(const Fault& fault) {
    if (fault.code == FaultCode::IncorrectColumns)
        return FindingCode::ShortLine;
    if (fault.code == FaultCode::NonIntegerPosition)
        return isLargeInteger(fault.text) ? FindingCode::PositionTooLarge
                                          : FindingCode::PositionNotWhole;
    const QByteArray text = fault.text.toUtf8();
    const PValue value = readPValue({text.constData(), static_cast<size_t>(text.size())}, false);
    const bool isSmall = value.kind == PValue::Kind::Number && !value.isBound && value.p == 0.0;
    return isSmall ? FindingCode::PTooSmall : FindingCode::PNotANumber;
}

// Walks over the lines of one file and keeps count.
class Walk {
public:
    Walk(const AssociationFile& file, WindowReading& reading) : m_file(file), m_reading(reading) {}

    void takeLine(const Record& record) {
        ++m_reading.rows;
        if (m_reading.stretches == 0 || record.chromosome != m_label)
            startStretch(record.chromosome);
    }

    void keep(const Record& record, const Marker& marker) {
        if (marker.pValue >= smallestSavedP && marker.pValue <= 1.0)
            m_reading.smallestP = std::min(m_reading.smallestP, marker.pValue);
        else
            takeOddP(record, marker.pValue);
        if (m_inStretch == 0)
            m_firstPosition = marker.position;
        else if (marker.position < m_position)
            report(FindingCode::PositionsUnsorted, m_file.layout().position, [&] {
                return QStringLiteral("%1 after %2").arg(marker.position).arg(m_position);
            });
        if (marker.position <= 0)
            report(FindingCode::PositionNotPositive, m_file.layout().position,
                   [&] { return QString::number(marker.position); });
        m_position = marker.position;
        ++m_inStretch;
    }

    void leaveOut(const Record& record) {
        ++m_reading.leftOut;
        if (record.pValue != "NA")
            report(FindingCode::PZero, m_file.layout().pValue,
                   [&] { return excerpt(record.pValue); });
    }

    void takeFault(const Fault& fault) {
        if (fault.code == FaultCode::IncorrectColumns)
            ++m_reading.rows;
        findingOf(m_reading.findings, codeOf(fault)).add({fault.line, fault.column, fault.text});
    }

    // Adds what the stretch says to its chromosome. Called once more after the last line.
    void endStretch();

private:
    void startStretch(std::string_view label);
    void takeOddP(const Record& record, double p);
    // `text` is called only for the places that are kept.
    template <typename Text>
    void report(FindingCode code, const Column& column, const Text& text) {
        Finding& finding = findingOf(m_reading.findings, code);
        if (finding.first.size() < Finding::placesKept)
            finding.add({m_file.line(), column.name, text()});
        else
            finding.addUnseen(m_file.line());
    }

    const AssociationFile& m_file;
    WindowReading& m_reading;
    QHash<QByteArray, qsizetype> m_chromosomes; // label to place in the list
    std::string m_label;                        // of the current stretch
    std::string m_drawnLabel;                   // of the last stretch with a marker
    qsizetype m_chromosome = -1;                // of the current stretch; -1 for one not listed
    bool m_isFirstStretch = true;               // of its chromosome
    qint64 m_startLine = 0;
    qint64 m_inStretch = 0; // markers
    int m_firstPosition = 0;
    int m_position = 0; // of the marker before
};

void Walk::startStretch(std::string_view label) {
    endStretch();
    ++m_reading.stretches;
    m_label = label;
    m_startLine = m_file.line();
    m_inStretch = 0;
    const QByteArray bytes(label.data(), static_cast<qsizetype>(label.size()));
    const auto found = m_chromosomes.constFind(bytes);
    m_isFirstStretch = found == m_chromosomes.constEnd();
    if (!m_isFirstStretch) {
        m_chromosome = *found;
        return;
    }
    m_chromosome = -1;
    if (m_reading.chromosomes.size() == WindowReading::chromosomesKept)
        return;
    m_chromosome = m_reading.chromosomes.size();
    m_chromosomes.insert(bytes, m_chromosome);
    m_reading.chromosomes.append({.label = bytes, .firstLine = m_startLine});
}

void Walk::endStretch() {
    if (m_inStretch == 0)
        return;
    if (m_reading.kept > 0 && m_drawnLabel != m_label)
        m_reading.isOneChromosome = false;
    m_drawnLabel = m_label;
    m_reading.kept += m_inStretch;
    if (m_chromosome < 0)
        return;
    ChromosomeFacts& facts = m_reading.chromosomes[m_chromosome];
    facts.markers += m_inStretch;
    if (!m_isFirstStretch) {
        findingOf(m_reading.findings, FindingCode::ChromosomeReturns)
            .add({m_startLine, m_file.layout().chromosome.name, excerpt(m_label)});
        return;
    }
    facts.loaded = m_inStretch;
    facts.firstPosition = m_firstPosition;
    facts.lastPosition = m_position;
}

void Walk::takeOddP(const Record& record, double p) {
    const auto reportP = [&](FindingCode code) {
        report(code, m_file.layout().pValue, [&] { return excerpt(record.pValue); });
    };
    if (!std::isfinite(p)) {
        reportP(FindingCode::PNotFinite);
        return;
    }
    if (p > 0.0)
        m_reading.smallestP = std::min(m_reading.smallestP, p);
    reportP(p < 0.0 || p > 1.0 ? FindingCode::POutOfRange : FindingCode::PTiny);
}

} // namespace

WindowReading readAsWindow(QIODevice& device) {
    WindowReading reading;
    AssociationFile file(device, {});
    if (!file.open()) {
        const bool isUnreadable = file.fault()->code == FaultCode::CannotOpenFile;
        (isUnreadable ? reading.unreadable : reading.refusal) = file.fault();
        return reading;
    }
    reading.layout = file.layout();
    Walk walk(file, reading);
    Record record;
    Marker marker;
    while (true) {
        while (file.next(record)) {
            walk.takeLine(record);
            if (file.readMarker(record, marker))
                walk.keep(record, marker);
            else if (!file.fault())
                walk.leaveOut(record);
        }
        if (!file.fault())
            break;
        const Fault fault = file.takeFault();
        if (fault.code == FaultCode::CannotOpenFile) {
            reading.unreadable = fault;
            break;
        }
        walk.takeFault(fault);
    }
    walk.endStretch();
    return reading;
}

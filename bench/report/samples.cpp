#include "report/samples.h"

#include <algorithm>

namespace {

// Three digits that count, without an exponent.
QString threeDigits(double number) {
    return QString::number(number, 'f', number < 10 ? 2 : number < 100 ? 1 : 0);
}

} // namespace

double Samples::minimum() const {
    return *std::min_element(m_samples.begin(), m_samples.end());
}

double Samples::median() const {
    QList<double> sorted = m_samples;
    std::sort(sorted.begin(), sorted.end());
    const qsizetype middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

double Samples::spread() const {
    const double largest = *std::max_element(m_samples.begin(), m_samples.end());
    return (largest - minimum()) / median();
}

Samples Samples::each(double divisor) const {
    Samples divided;
    for (const double sample : m_samples)
        divided.add(sample / divisor);
    return divided;
}

QString toldSeconds(double seconds) {
    return seconds < 1.0 ? threeDigits(seconds * 1e3) + " ms" : threeDigits(seconds) + " s";
}

QString told(const Samples& seconds) {
    return QStringLiteral("%1 (%2, %3 %)")
        .arg(toldSeconds(seconds.median()), toldSeconds(seconds.minimum()))
        .arg(100.0 * seconds.spread(), 0, 'f', 0);
}

QString toldBytes(double bytes) {
    return threeDigits(bytes * 1e-6) + " MB";
}

#include "report/samples.h"

#include <algorithm>

double Samples::minimum() const {
    return *std::min_element(m_samples.begin(), m_samples.end());
}

double Samples::median() const {
    QList<double> sorted = m_samples;
    std::sort(sorted.begin(), sorted.end());
    const qsizetype middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

double Samples::maximum() const {
    return *std::max_element(m_samples.begin(), m_samples.end());
}

QString threeDigits(double number) {
    return QString::number(number, 'f', number < 10 ? 2 : number < 100 ? 1 : 0);
}

QString secondsText(double seconds) {
    return seconds < 1.0 ? threeDigits(seconds * 1e3) + " ms" : threeDigits(seconds) + " s";
}

QString secondsText(const Samples& seconds) {
    const double spread = (seconds.maximum() - seconds.minimum()) / seconds.median();
    return QStringLiteral("%1 (%2, %3 %)")
        .arg(secondsText(seconds.median()), secondsText(seconds.minimum()))
        .arg(100.0 * spread, 0, 'f', 0);
}

QString bytesText(double bytes) {
    return threeDigits(bytes * 1e-6) + " MB";
}

QString linesText(qint64 lines) {
    constexpr qint64 million = 1'000'000;
    return lines % million == 0 ? QStringLiteral("%1 million lines").arg(lines / million)
                                : QStringLiteral("%1 lines").arg(lines);
}

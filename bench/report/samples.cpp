#include "report/samples.h"

#include "report/programs.h"

#include <QtMath>
#include <algorithm>

void Samples::add(double sample) {
    m_sorted.insert(std::upper_bound(m_sorted.begin(), m_sorted.end(), sample), sample);
}

double Samples::quantile(double share) const {
    if (m_sorted.isEmpty())
        fail("nothing was measured");
    const double place = share * static_cast<double>(m_sorted.size() - 1);
    return (m_sorted[qFloor(place)] + m_sorted[qCeil(place)]) / 2;
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

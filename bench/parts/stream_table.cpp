#include "parts/stream_table.h"

#include <QFile>
#include <QTextStream>
#include <cmath>

bool saveByTextStream(const QString& fileName, const Points& points, const QString& label) {
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    QTextStream stream(&file);
    stream << "Chr\tPosition\tP\t-log10(P)\n";
    for (qsizetype i = 0; i < points.positions.size(); ++i)
        stream << label << '\t' << points.positions[i] << '\t'
               << 1.0 / std::pow(10.0, points.values[i]) << '\t' << points.values[i] << '\n';
    stream.flush();
    return stream.status() == QTextStream::Ok && file.flush();
}

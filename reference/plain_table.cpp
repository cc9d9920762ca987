#include "plain_table.h"

#include <QBuffer>
#include <QTextStream>
#include <cmath>

namespace plain {

bool writeTable(QIODevice& device, const Points& points, const QString& label) {
    QTextStream stream(&device);
    stream.setEncoding(QStringConverter::System);
    stream << "Chr\tPosition\tP\t-log10(P)\n";
    for (qsizetype i = 0; i < points.positions.size(); ++i)
        stream << label << '\t' << points.positions[i] << '\t'
               << 1.0 / std::pow(10.0, points.values[i]) << '\t' << points.values[i] << '\n';
    stream.flush();
    return stream.status() == QTextStream::Ok;
}

QByteArray table(const Points& points, const QString& label) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    writeTable(buffer, points, label);
    return buffer.data();
}

} // namespace plain

#include "output/point_table.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextStream>
#include <cmath>

namespace {

constexpr QIODevice::OpenMode writing = QIODevice::WriteOnly | QIODevice::Text;

// To put a finished file in the place of a device, or of a pipe, would be to lose the device.
bool isSpecial(const QString& fileName) {
    const QFileInfo info(fileName);
    return info.exists() && !info.isFile();
}

} // namespace

QString tableName(const QString& name) {
    return name.endsWith(QLatin1String(".txt")) ? name : name + QLatin1String(".txt");
}

QString imageName(const QString& tableName) {
    return tableName.section(u'.', 0, 0) + QLatin1String(".png");
}

bool writePointTable(QIODevice& device, const Points& points, const QString& label) {
    QTextStream text(&device);
    text.setEncoding(QStringConverter::System);
    text << "Chr\tPosition\tP\t-log10(P)\n";
    for (qsizetype i = 0; i < points.positions.size(); ++i) {
        const double value = points.values[i];
        text << label << '\t' << points.positions[i] << '\t' << 1.0 / std::pow(10.0, value) << '\t'
             << value << '\n';
    }
    text.flush();
    return text.status() == QTextStream::Ok;
}

bool savePointTable(const QString& fileName, const Points& points, const QString& label) {
    if (isSpecial(fileName)) {
        QFile file(fileName);
        return file.open(writing) && writePointTable(file, points, label) && file.flush();
    }
    QSaveFile file(fileName);
    file.setDirectWriteFallback(true);
    return file.open(writing) && writePointTable(file, points, label) && file.commit();
}

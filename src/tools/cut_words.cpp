#include "cut_words.h"

#include "prepare_words.h"

#include <QJsonArray>

namespace {

constexpr qsizetype namesShown = 5;

QString counted(qint64 count, const char* what) {
    return QStringLiteral("%1 %2%3").arg(count).arg(QLatin1String(what),
                                                    QLatin1String(count == 1 ? "" : "s"));
}

QString placeText(const CutPart& part) {
    return part.chromosome.isEmpty()
               ? QString()
               : QStringLiteral(" on chromosome ") + QString::fromUtf8(part.chromosome);
}

QString notFoundText(const CutPart& part) {
    QByteArrayList names = part.notFound.mid(0, namesShown);
    if (names.size() < part.notFound.size())
        names.append("...");
    return names.isEmpty() ? QString()
                           : QStringLiteral("; %1 not found (%2)")
                                 .arg(counted(part.notFound.size(), "name"),
                                      QString::fromUtf8(names.join(", ")));
}

QString partText(const CutPart& part) {
    QString text = QStringLiteral("  %1: ").arg(part.name);
    if (part.kind == CutPart::Kind::Region)
        return text + counted(part.matched, "marker") + placeText(part) + QLatin1Char('\n');
    if (part.kind == CutPart::Kind::Names)
        return text + counted(part.named, "name") + QLatin1String(", ") +
               counted(part.matched, "line") + QLatin1String(" matched") + notFoundText(part) +
               QLatin1Char('\n');
    text += QStringLiteral("%1, %2 matched").arg(counted(part.named, "row")).arg(part.matched) +
            placeText(part);
    if (part.isByWindow)
        text += QLatin1String(", as the window reads the file");
    if (part.equal > 0)
        text += QStringLiteral("; %1 of them like others that are not named: the first in the file "
                               "were taken")
                    .arg(part.equal);
    return text + QLatin1Char('\n');
}

QLatin1String nameOf(CutPart::Kind kind) {
    return QLatin1String(kind == CutPart::Kind::Table    ? "table"
                         : kind == CutPart::Kind::Region ? "region"
                                                         : "names");
}

QJsonObject partJson(const CutPart& part) {
    QJsonArray notFound;
    for (const QByteArray& name : part.notFound.mid(0, namesShown))
        notFound.append(QString::fromUtf8(name));
    return {{"kind", nameOf(part.kind)},
            {"name", part.name},
            {"named", part.named},
            {"matched", part.matched},
            {"chromosome", QString::fromUtf8(part.chromosome)},
            {"equal", part.equal},
            {"by_window", part.isByWindow},
            {"not_found", part.notFound.size()},
            {"first_not_found", notFound}};
}

} // namespace

QByteArray textOf(const CutReport& report) {
    const bool isKeep = qstrcmp(report.command, "keep") == 0;
    QString text =
        QStringLiteral("%1: %2: %3 named, %4 written to %5\n")
            .arg(report.input, counted(report.lines, "line"), QString::number(report.named),
                 QString::number(report.written), report.output);
    text += QLatin1String(isKeep ? "Kept\n" : "Dropped\n");
    for (const CutPart& part : report.parts)
        text += partText(part);
    text += columnsText(report.scan);
    const QByteArray heading =
        "Lines that no view holds: " + QByteArray::number(report.notInViews) +
        (isKeep ? ", left out" : ", written");
    return (text + droppedText(report.scan, {report.input}, heading.constData())).toUtf8();
}

QJsonObject jsonOf(const CutReport& report) {
    QJsonArray parts;
    for (const CutPart& part : report.parts)
        parts.append(partJson(part));
    QJsonObject json = columnsJson(report.scan);
    json["version"] = 1;
    json["command"] = QLatin1String(report.command);
    json["input"] = report.input;
    json["output"] = report.output;
    json["parts"] = parts;
    json["lines"] = report.lines;
    json["named"] = report.named;
    json["written"] = report.written;
    json["not_in_views"] = report.notInViews;
    json["without_marker"] = droppedJson(report.scan, {report.input});
    return json;
}

#include "hits_words.h"

#include <QJsonArray>

namespace {

constexpr const char* missingText = "NA";

QByteArray orMissing(const QByteArray& text) {
    return text.isEmpty() ? QByteArray(missingText) : text;
}

// The p of the strongest marker around a lead.
QByteArray nextP(const Hits& hits, const LeadMarker& lead) {
    return lead.neighbor ? hits.texts.value(*lead.neighbor).p : QByteArray();
}

QByteArrayList rowOf(const Hits& hits, const LeadMarker& lead) {
    const MarkerTexts texts = hits.texts.value(lead.row);
    return QByteArrayList{hits.scan.chromosomes[lead.chromosome].name,
                          QByteArray::number(hits.scan.position(lead.row)),
                          orMissing(texts.name),
                          texts.p,
                          texts.negLog10,
                          QByteArray::number(lead.hits),
                          QByteArray::number(lead.firstHit),
                          QByteArray::number(lead.lastHit),
                          QByteArray::number(lead.nearby),
                          orMissing(nextP(hits, lead)),
                          lead.isLone ? "lone" : "no"} +
           texts.columns;
}

QJsonValue orNull(const QByteArray& text) {
    return text.isEmpty() ? QJsonValue() : QJsonValue(QString::fromUtf8(text));
}

QJsonObject leadJson(const Hits& hits, const LeadMarker& lead) {
    const MarkerTexts texts = hits.texts.value(lead.row);
    QJsonObject columns;
    for (qsizetype i = 0; i < texts.columns.size(); ++i)
        columns[QString::fromUtf8(hits.titles[i])] = QString::fromUtf8(texts.columns[i]);
    return {{"chromosome", QString::fromUtf8(hits.scan.chromosomes[lead.chromosome].name)},
            {"position", hits.scan.position(lead.row)},
            {"line", hits.scan.lines[lead.row]},
            {"name", orNull(texts.name)},
            {"p", QString::fromUtf8(texts.p)},
            {"neg_log10_p", QString::fromUtf8(texts.negLog10)},
            {"hits", lead.hits},
            {"first_hit", lead.firstHit},
            {"last_hit", lead.lastHit},
            {"nearby", lead.nearby},
            {"next_p", orNull(nextP(hits, lead))},
            {"lone", lead.isLone},
            {"own_columns", columns}};
}

} // namespace

QByteArray tableOf(const Hits& hits) {
    const QByteArrayList titles{"Chr",      "Position", "Name",   "P",     "-log10(P)", "Hits",
                                "FirstHit", "LastHit",  "Nearby", "NextP", "Lone"};
    QByteArray text = (titles + hits.titles).join('\t') + '\n';
    for (const LeadMarker& lead : hits.leads)
        text += rowOf(hits, lead).join('\t') + '\n';
    return text;
}

QByteArray textOf(const Hits& hits) {
    const PrepareReport& report = hits.scan.report;
    QString text =
        QStringLiteral("%1: %2 rows: %3 markers, %4 dropped\n")
            .arg(hits.reading.inputs.join(QLatin1String(", ")), QString::number(report.rows),
                 QString::number(report.written), QString::number(report.rows - report.written));
    text += columnsText(hits.reading.report) + rowsText(hits.reading);
    text += QStringLiteral("Threshold: p below %1\n").arg(QString::fromUtf8(hits.threshold));
    text += QStringLiteral("Leads: %1, at least %2 base pairs apart, written to %3\n")
                .arg(hits.leads.size())
                .arg(hits.rule.window)
                .arg(hits.reading.output);
    if (hits.lambda)
        text += QStringLiteral("Lambda: %1\n").arg(*hits.lambda, 0, 'f', 4);
    return text.toUtf8();
}

QJsonObject jsonOf(const Hits& hits) {
    QJsonObject object = jsonOf(hits.reading);
    object["command"] = QStringLiteral("hits");
    object["markers"] = object.take("written");
    object["threshold"] = QString::fromUtf8(hits.threshold);
    object["window"] = hits.rule.window;
    object["lambda"] = hits.lambda ? QJsonValue(*hits.lambda) : QJsonValue();
    QJsonArray leads;
    for (const LeadMarker& lead : hits.leads)
        leads.append(leadJson(hits, lead));
    object["leads"] = leads;
    return object;
}

#include "check_report.h"

#include "column_option.h"
#include "finding_words.h"
#include "mending.h"
#include "utf8.h"

#include <QJsonArray>
#include <algorithm>
#include <cmath>

namespace {

constexpr qsizetype chromosomesShown = 50;

QString labelOf(const ChromosomeFacts& facts) {
    return fromUtf8({facts.label.constData(), static_cast<size_t>(facts.label.size())});
}

double largestNegLog10(const WindowReading& reading) {
    return reading.kept > 0 ? -std::log10(reading.smallestP) : 0.0;
}

QString delimiterName(char delimiter) {
    return delimiter == '\t'  ? QStringLiteral("tab")
           : delimiter == ' ' ? QStringLiteral("space")
                              : QStringLiteral("comma");
}

QString place(const QString& name, qint64 line) {
    return line > 0 ? QStringLiteral("%1:%2: ").arg(name, QString::number(line))
                    : name + QLatin1String(": ");
}

QString severityName(FindingCode code) {
    return severity(code) == Severity::Error ? QStringLiteral("error") : QStringLiteral("warning");
}

QString findingText(const Finding& finding, const CheckReport& report) {
    QString text;
    const QString tail = QLatin1String(" [") + nameOf(finding.code) + QLatin1String("]\n");
    for (const Place& where : finding.first)
        text += place(report.name, where.line) + severityName(finding.code) + QLatin1String(": ") +
                sentence(finding, where, report.diagnosis) + tail;
    const qint64 more = finding.count - finding.first.size();
    if (more > 0)
        text += place(report.name, finding.lastLine) + severityName(finding.code) +
                QStringLiteral(": and %1 more, the last on this line").arg(more) + tail;
    return text;
}

QString columnLine(const char* role, const Column& window, const ComparedColumn* compared) {
    QString text = QStringLiteral("  %1  \"%2\" (column %3)")
                       .arg(QString::fromLatin1(role).leftJustified(10), window.name,
                            QString::number(window.index + 1));
    if (compared == nullptr || compared->rightNumber == 0)
        return text + QLatin1Char('\n');
    if (compared->isRight)
        return text + QLatin1String(", which is right\n");
    if (compared->number == compared->rightNumber && compared->title == compared->rightTitle)
        return text + QLatin1String(", which holds something else\n");
    return text + QStringLiteral("; right is \"%1\" (column %2)\n")
                      .arg(compared->rightTitle, QString::number(compared->rightNumber));
}

QString columnsText(const Diagnosis& diagnosis) {
    const std::optional<Layout>& layout = diagnosis.reading.layout;
    if (!layout)
        return {};
    const ComparedColumns* columns = diagnosis.columns ? &*diagnosis.columns : nullptr;
    return QStringLiteral("The window takes (delimiter: %1%2)\n")
               .arg(delimiterName(layout->delimiter),
                    layout->headerLines == 0 ? QStringLiteral(", no titles") : QString()) +
           columnLine("chromosome", layout->chromosome, columns ? &columns->chromosome : nullptr) +
           columnLine("position", layout->position, columns ? &columns->position : nullptr) +
           columnLine("p", layout->pValue, columns ? &columns->p : nullptr);
}

// Where the window takes no columns at all.
QString rightColumnsText(const Diagnosis& diagnosis) {
    const auto* right = std::get_if<Understanding>(&diagnosis.right);
    if (diagnosis.reading.layout || right == nullptr)
        return {};
    QString text = QStringLiteral("The right columns\n");
    for (const RoleNote& note : right->columns.notes)
        text += QStringLiteral("  %1: %2\n").arg(columnText(note.title, note.column), note.why);
    return text;
}

QString countsText(const WindowReading& reading) {
    if (!reading.layout)
        return {};
    return QStringLiteral("Rows: %1; markers: %2; left out for a p of NA or 0: %3; "
                          "largest -log10 p: %4\n")
        .arg(reading.rows)
        .arg(reading.kept)
        .arg(reading.leftOut)
        .arg(largestNegLog10(reading), 0, 'g', 6);
}

QString chromosomesText(const WindowReading& reading) {
    QString text;
    qsizetype shown = 0, all = 0;
    for (const ChromosomeFacts& facts : reading.chromosomes) {
        if (facts.markers == 0)
            continue;
        ++all;
        if (shown == chromosomesShown)
            continue;
        ++shown;
        text += QLatin1String("  ") + labelOf(facts).leftJustified(10) +
                QStringLiteral("  %1  %2  %3  %4\n")
                    .arg(facts.markers, 9)
                    .arg(facts.firstLine, 10)
                    .arg(facts.firstPosition, 12)
                    .arg(facts.lastPosition, 12);
    }
    if (all == 0)
        return {};
    const bool isCut = reading.chromosomes.size() == WindowReading::chromosomesKept;
    text.prepend(QStringLiteral("Chromosomes: %1%2\n  label         markers  first line   first "
                                "base    last base\n")
                     .arg(isCut ? QStringLiteral("at least ") : QString())
                     .arg(all));
    if (all > shown)
        text += QStringLiteral("  ... and %1 more\n").arg(all - shown);
    return text;
}

QString mendingText(const CheckReport& report) {
    const Mending mended = mending(report.diagnosis, report.word);
    QString text = mended.reason.isEmpty() ? QString() : mended.reason + QLatin1Char('\n');
    if (!mended.commands.isEmpty())
        text += mended.commands.size() == 1 ? QStringLiteral("To mend it:\n")
                                            : QStringLiteral("To mend it, choose one:\n");
    for (const QString& command : mended.commands)
        text += QLatin1String("  ") + command + QLatin1Char('\n');
    for (const QString& advice : mended.advice)
        text += advice + QLatin1Char('\n');
    return text;
}

QJsonObject jsonOf(const Column& column) {
    return {{"column", static_cast<qint64>(column.index) + 1}, {"title", column.name}};
}

QJsonObject jsonOf(const ComparedColumn& column) {
    QJsonObject object{{"right", column.isRight}};
    if (column.rightNumber > 0) {
        object["column"] = column.rightNumber;
        object["title"] = column.rightTitle;
        object["why"] = column.why;
    }
    return object;
}

QJsonObject jsonOf(const Finding& finding, const Diagnosis& diagnosis) {
    QJsonArray places;
    for (const Place& where : finding.first)
        places.append(QJsonObject{{"line", where.line},
                                  {"column", where.column},
                                  {"text", where.text},
                                  {"message", sentence(finding, where, diagnosis)}});
    return {{"code", nameOf(finding.code)},
            {"severity", severityName(finding.code)},
            {"count", finding.count},
            {"last_line", finding.lastLine},
            {"first", places}};
}

QJsonArray chromosomesJson(const WindowReading& reading) {
    QJsonArray chromosomes;
    for (const ChromosomeFacts& facts : reading.chromosomes)
        if (facts.markers > 0)
            chromosomes.append(QJsonObject{{"label", labelOf(facts)},
                                           {"markers", facts.markers},
                                           {"first_line", facts.firstLine},
                                           {"first_position", facts.firstPosition},
                                           {"last_position", facts.lastPosition}});
    return chromosomes;
}

} // namespace

QByteArray textOf(const CheckReport& report, bool isBrief) {
    const Diagnosis& diagnosis = report.diagnosis;
    QString text = report.name + QLatin1String(": ") + sentence(diagnosis) + QLatin1Char('\n');
    if (!isBrief)
        text += columnsText(diagnosis) + rightColumnsText(diagnosis) +
                countsText(diagnosis.reading) + chromosomesText(diagnosis.reading);
    for (const Finding& finding : diagnosis.findings)
        text += findingText(finding, report);
    return (text + mendingText(report)).toUtf8();
}

QJsonObject jsonOf(const CheckReport& report) {
    const Diagnosis& diagnosis = report.diagnosis;
    const WindowReading& reading = diagnosis.reading;
    QJsonObject object{{"file", report.word},
                       {"verdict", nameOf(diagnosis.verdict)},
                       {"packing", report.packing},
                       {"rows", reading.rows},
                       {"markers", reading.kept},
                       {"left_out", reading.leftOut},
                       {"chromosomes", chromosomesJson(reading)}};
    if (diagnosis.endsAtLine > 0)
        object["ends_at_line"] = diagnosis.endsAtLine;
    if (reading.kept > 0)
        object["largest_neg_log10_p"] = largestNegLog10(reading);
    if (reading.layout)
        object["window"] = QJsonObject{{"delimiter", delimiterName(reading.layout->delimiter)},
                                       {"has_titles", reading.layout->headerLines > 0},
                                       {"chromosome", jsonOf(reading.layout->chromosome)},
                                       {"position", jsonOf(reading.layout->position)},
                                       {"p", jsonOf(reading.layout->pValue)}};
    if (diagnosis.columns)
        object["right"] = QJsonObject{{"chromosome", jsonOf(diagnosis.columns->chromosome)},
                                      {"position", jsonOf(diagnosis.columns->position)},
                                      {"p", jsonOf(diagnosis.columns->p)}};
    QJsonArray findings;
    for (const Finding& finding : diagnosis.findings)
        findings.append(jsonOf(finding, diagnosis));
    object["findings"] = findings;
    const Mending mended = mending(diagnosis, report.word);
    object["reason"] = mended.reason;
    object["commands"] = QJsonArray::fromStringList(mended.commands);
    object["advice"] = QJsonArray::fromStringList(mended.advice);
    return object;
}

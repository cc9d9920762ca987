#include "mending.h"

#include "column_option.h"

#include <algorithm>

namespace {

bool has(const Diagnosis& diagnosis, FindingCode code) {
    return std::any_of(diagnosis.findings.begin(), diagnosis.findings.end(),
                       [&](const Finding& finding) { return finding.code == code; });
}

// Beside the file, under its name without its endings.
QString outputName(const QString& name) {
    if (name == QLatin1String("-"))
        return QStringLiteral("prepared.txt");
    QString stem = name;
    for (const char* ending : {".gz", ".bgz", ".zst", ".txt", ".tsv", ".csv"})
        if (stem.endsWith(QLatin1String(ending), Qt::CaseInsensitive) &&
            stem.size() > qsizetype(qstrlen(ending)))
            stem.chop(qsizetype(qstrlen(ending)));
    return stem + QLatin1String(".prepared.txt");
}

// A name that begins with a hyphen would be taken for an option.
QString fileWord(const QString& name) {
    const bool isOption = name.startsWith(QLatin1Char('-')) && name.size() > 1;
    const QString word = isOption ? QLatin1String("./") + name : name;
    return QString::fromUtf8(shellQuoted(word.toUtf8()));
}

QString prepareCommand(const QString& name, const QString& options) {
    QString command = QStringLiteral("pelmark-tools prepare ") + fileWord(name);
    if (!options.isEmpty())
        command += QLatin1Char(' ') + options;
    return command + QStringLiteral(" -o ") + fileWord(outputName(name));
}

// Whether `prepare` makes something else of the file than it is.
bool isMendedByPrepare(FindingCode code) {
    return code != FindingCode::PathTooLong && code != FindingCode::PathFull &&
           code != FindingCode::ForeignFile && code != FindingCode::PTiny &&
           code != FindingCode::TooFewMarkers && code != FindingCode::EqualPositions &&
           code != FindingCode::FileName;
}

// Chromosomes that have one marker in the whole file, not only in their first stretch.
bool hasSingleMarkers(const Diagnosis& diagnosis) {
    const QList<ChromosomeFacts>& all = diagnosis.reading.chromosomes;
    return has(diagnosis, FindingCode::FewMarkers) &&
           std::any_of(all.begin(), all.end(),
                       [](const ChromosomeFacts& facts) { return facts.markers == 1; });
}

void addCommands(const Diagnosis& diagnosis, const QString& name, Mending& mending) {
    const bool hasTitles = !diagnosis.reading.layout || diagnosis.reading.layout->headerLines > 0;
    QString always = hasSingleMarkers(diagnosis) ? QStringLiteral("--min-markers 2") : QString();
    if (!hasTitles)
        always =
            (QStringLiteral("--no-header --chromosome 1 --position 2 --p 3 ") + always).trimmed();
    const auto* refusal = std::get_if<Refusal>(&diagnosis.right);
    if (refusal == nullptr) {
        mending.commands.append(prepareCommand(name, always));
        return;
    }
    if (!has(diagnosis, FindingCode::ColumnsInDoubt))
        mending.reason = refusal->message;
    for (const QByteArray& option : refusal->options)
        mending.commands.append(prepareCommand(
            name, (QString::fromUtf8(option) + QLatin1Char(' ') + always).trimmed()));
}

} // namespace

Mending mending(const Diagnosis& diagnosis, const QString& name) {
    Mending mending;
    const QList<Finding>& findings = diagnosis.findings;
    const bool isForeign = has(diagnosis, FindingCode::ForeignFile);
    if (!isForeign && std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
            return isMendedByPrepare(finding.code);
        }))
        addCommands(diagnosis, name, mending);
    else if (has(diagnosis, FindingCode::FileName) && !isForeign)
        mending.commands.append(QStringLiteral("mv -i ") + fileWord(name) + QLatin1Char(' ') +
                                fileWord(name + QLatin1String(".txt")));
    if (hasSingleMarkers(diagnosis))
        mending.advice.append(
            QStringLiteral("--min-markers 2 leaves such chromosomes out; with them "
                           "in, draw no box over one."));
    if (has(diagnosis, FindingCode::EqualPositions))
        mending.advice.append(
            QStringLiteral("A chromosome whose markers are all at one place cannot be "
                           "drawn; look at it in the genome view, or in the table."));
    if (has(diagnosis, FindingCode::PathTooLong) || has(diagnosis, FindingCode::PathFull))
        mending.advice.append(
            QStringLiteral("Write to a folder with a shorter path, or move the file "
                           "there."));
    return mending;
}

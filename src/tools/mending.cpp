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

// Chromosomes that have one marker in the whole file, not only in their first stretch.
bool hasSingleMarkers(const Diagnosis& diagnosis) {
    const QList<ChromosomeFacts>& all = diagnosis.reading.chromosomes;
    return has(diagnosis, FindingCode::FewMarkers) &&
           std::any_of(all.begin(), all.end(),
                       [](const ChromosomeFacts& facts) { return facts.markers == 1; });
}

bool hasOthersThanSingleMarkers(const Diagnosis& diagnosis) {
    const QList<ChromosomeFacts>& all = diagnosis.reading.chromosomes;
    return std::any_of(all.begin(), all.end(),
                       [](const ChromosomeFacts& facts) { return facts.markers > 1; });
}

// Whether `prepare` makes something else of the file than it is.
bool isMendedByPrepare(FindingCode code, const Diagnosis& diagnosis) {
    switch (code) {
    case FindingCode::PathTooLong:
    case FindingCode::PathFull:
    case FindingCode::ForeignFile:
    case FindingCode::PTiny:
    case FindingCode::TooFewMarkers:
    case FindingCode::EqualPositions:
    case FindingCode::FileName:
        return false;
    case FindingCode::FewMarkers:
        return !hasSingleMarkers(diagnosis) || hasOthersThanSingleMarkers(diagnosis);
    default:
        return true;
    }
}

// Many labels in the right column: names of markers under its title, or scaffolds.
std::optional<Refusal> doubtfulChromosomes(const Diagnosis& diagnosis) {
    const auto* right = std::get_if<Understanding>(&diagnosis.right);
    if (right == nullptr || right->columns.chromosome < 0 ||
        !has(diagnosis, FindingCode::NamesAsChromosomes) ||
        (diagnosis.columns && !diagnosis.columns->chromosome.isRight))
        return std::nullopt;
    const QList<QByteArray>& titles = right->format.titles;
    const int column = right->columns.chromosome;
    Refusal refusal{RefusalCode::LooksLikeNames,
                    columnText(titles, column) +
                        QStringLiteral(" looks like marker names. Name the right column, or this "
                                       "one if they are scaffolds."),
                    {},
                    {"--no-header --chromosome N --position N --p N"}};
    if (!titles.isEmpty())
        refusal.options = {"--chromosome COLUMN", optionFor("--chromosome", titles, column)};
    return refusal;
}

// Why `prepare` needs to be told more.
std::optional<Refusal> refusalOf(const Diagnosis& diagnosis) {
    if (const auto* refusal = std::get_if<Refusal>(&diagnosis.right))
        return *refusal;
    return diagnosis.leftToChoose ? diagnosis.leftToChoose : doubtfulChromosomes(diagnosis);
}

void addCommands(const Diagnosis& diagnosis, const QString& name, Mending& mending) {
    const bool hasTitles = !diagnosis.reading.layout || diagnosis.reading.layout->headerLines > 0;
    const QString withoutTitles =
        hasTitles ? QString() : QStringLiteral(" --no-header --chromosome 1 --position 2 --p 3");
    const QString withoutSingles =
        hasSingleMarkers(diagnosis) && hasOthersThanSingleMarkers(diagnosis)
            ? QStringLiteral(" --min-markers 2")
            : QString();
    const std::optional<Refusal> refusal = refusalOf(diagnosis);
    if (!refusal) {
        mending.commands.append(prepareCommand(name, (withoutTitles + withoutSingles).trimmed()));
        return;
    }
    if (!has(diagnosis, FindingCode::ColumnsInDoubt))
        mending.reason = refusal->message;
    for (const QByteArray& option : refusal->options)
        mending.commands.append(prepareCommand(
            name, QString::fromUtf8(option) +
                      (option.startsWith("--no-header") ? QString() : withoutTitles) +
                      withoutSingles));
}

} // namespace

Mending mending(const Diagnosis& diagnosis, const QString& name) {
    Mending mending;
    const QList<Finding>& findings = diagnosis.findings;
    const bool isForeign = has(diagnosis, FindingCode::ForeignFile);
    if (!isForeign && std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
            return isMendedByPrepare(finding.code, diagnosis);
        }))
        addCommands(diagnosis, name, mending);
    else if (has(diagnosis, FindingCode::FileName) && !isForeign)
        mending.commands.append(QStringLiteral("mv -i ") + fileWord(name) + QLatin1Char(' ') +
                                fileWord(name + QLatin1String(".txt")));
    if (hasSingleMarkers(diagnosis))
        mending.advice.append(
            hasOthersThanSingleMarkers(diagnosis)
                ? QStringLiteral("--min-markers 2 leaves such chromosomes out; with them in, draw "
                                 "no box over one.")
                : QStringLiteral("The file has too few markers: no chromosome has two that the "
                                 "window can load. Draw no box in it."));
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

#include "diagnosis.h"

#include "chromosome_names.h"
#include "text_blocks.h"
#include "utf8.h"

#include <QHash>
#include <algorithm>
#include <string>

namespace {

constexpr qsizetype windowPathBytes = 200;

std::string_view firstLineOf(const QByteArray& head) {
    const std::string_view text(head.constData(), static_cast<size_t>(head.size()));
    return text.substr(0, text.find('\n'));
}

QString textOf(const QByteArray& label) {
    return fromUtf8({label.constData(), static_cast<size_t>(label.size())});
}

void add(QList<Finding>& findings, FindingCode code, const Place& place = {}) {
    Finding finding{code, 0, {}, 0};
    finding.add(place);
    findings.append(finding);
}

// The window's rule itself is asked, with titles appended that it takes: a role is missing where
// titles for the other two do not help.
QList<QString> missingRoles(const QByteArray& head) {
    const std::string_view line = firstLineOf(head);
    const char delimiter = line.find('\t') != std::string_view::npos  ? '\t'
                           : line.find(' ') != std::string_view::npos ? ' '
                                                                      : ',';
    const std::pair<const char*, const char*> roles[] = {
        {"chromosome", "chr"}, {"position", "pos"}, {"p", "P"}};
    QList<QString> missing;
    for (const auto& [role, title] : roles) {
        std::string titles(line);
        for (const auto& [other, otherTitle] : roles)
            if (other != role)
                titles.append(1, delimiter).append(otherTitle);
        const std::string padded = titles + '\n' + std::string(TextBlocks::padding, '\0');
        const Result<Layout> layout = windowLayout({padded.data(), titles.size() + 1});
        if (std::holds_alternative<Fault>(layout))
            missing.append(QString::fromLatin1(role));
    }
    return missing;
}

void addRefusal(const Fault& fault, Diagnosis& diagnosis) {
    const FindingCode code = fault.code == FaultCode::UnknownDelimiter ? FindingCode::NoDelimiter
                             : fault.code == FaultCode::TooFewColumns  ? FindingCode::TooFewColumns
                                                                       : FindingCode::MissingTitles;
    add(diagnosis.findings, code, {fault.line, {}, fault.text});
}

void addFileFindings(const FileFacts& file, Diagnosis& diagnosis) {
    QList<Finding>& findings = diagnosis.findings;
    if (!file.foreignKind.isEmpty())
        add(findings, FindingCode::ForeignFile, {0, {}, file.foreignKind});
    if (!file.packing.isEmpty() && file.packing != QLatin1String("plain"))
        add(findings, FindingCode::Packed, {0, {}, file.packing});
    if (file.hasLoneReturns)
        add(findings, FindingCode::LoneReturns);
    if (file.path.isEmpty())
        return;
    if (file.pathBytes >= windowPathBytes)
        add(findings,
            file.pathBytes > windowPathBytes ? FindingCode::PathTooLong : FindingCode::PathFull,
            {0, {}, QString::number(file.pathBytes)});
    if (!file.path.endsWith(QLatin1String(".txt"), Qt::CaseInsensitive) &&
        !file.path.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive))
        add(findings, FindingCode::FileName);
}

void addHeaderFindings(const FileFacts& file, Diagnosis& diagnosis) {
    const std::string_view line = firstLineOf(file.head);
    QList<Finding>& findings = diagnosis.findings;
    if (line.substr(0, 2) == "##")
        add(findings, FindingCode::CommentLines, {1, {}, {}});
    const auto* right = std::get_if<Understanding>(&diagnosis.right);
    if (right == nullptr)
        return;
    const bool areTitlesQuoted =
        right->format.headerLine == 1 && line.find('"') != std::string_view::npos;
    if (right->format.quoted &&
        (areTitlesQuoted || (diagnosis.columns && diagnosis.columns->isQuoted)))
        add(findings, FindingCode::Quotes, {right->format.headerLine, {}, {}});
    const auto has = [&](char c) { return line.find(c) != std::string_view::npos; };
    if (right->format.separator == Separator::Comma && has(' ') && !has('\t'))
        add(findings, FindingCode::CommaAndSpace, {1, {}, {}});
}

Place placeOf(const ComparedColumn& column) {
    return {column.line, column.title, column.windowText};
}

// As many as marker names, and more than any genome has sequences to scan.
bool hasManyLabels(const WindowReading& reading) {
    constexpr qint64 manyLabels = 1000;
    const qint64 kept = reading.chromosomes.size();
    const qint64 labels = kept == WindowReading::chromosomesKept ? reading.stretches : kept;
    return labels > manyLabels && labels * 2 > reading.rows;
}

void addColumnFindings(Diagnosis& diagnosis) {
    if (!diagnosis.columns)
        return;
    const ComparedColumns& columns = *diagnosis.columns;
    QList<Finding>& findings = diagnosis.findings;
    if (!columns.chromosome.isRight)
        add(findings,
            columns.isNames || hasManyLabels(diagnosis.reading) ? FindingCode::NamesAsChromosomes
                                                                : FindingCode::WrongChromosome,
            placeOf(columns.chromosome));
    if (!columns.position.isRight)
        add(findings, FindingCode::WrongPosition, placeOf(columns.position));
    if (!columns.p.isRight)
        add(findings, columns.isLog ? FindingCode::LogAsP : FindingCode::WrongP,
            placeOf(columns.p));
    if (columns.tests.size() > 1)
        add(findings, FindingCode::SeveralTests, {0, {}, columns.tests.join(QLatin1String(", "))});
    if (columns.isAligned)
        add(findings, FindingCode::AlignedColumns);
}

// Where no titles tell, values do: as many labels as marker names, or values no p-value can have.
void addValueFindings(Diagnosis& diagnosis) {
    const WindowReading& reading = diagnosis.reading;
    QList<Finding>& findings = diagnosis.findings;
    const auto* right = std::get_if<Understanding>(&diagnosis.right);
    const bool isPrepared = right != nullptr && right->columns.isPrepared;
    const bool isRight = !diagnosis.columns || diagnosis.columns->chromosome.isRight;
    if (isRight && !isPrepared && hasManyLabels(reading))
        add(findings, FindingCode::NamesAsChromosomes, {0, reading.layout->chromosome.name, {}});
    const bool isKnown = diagnosis.columns && diagnosis.columns->p.rightNumber > 0;
    const auto outside =
        std::find_if(reading.findings.begin(), reading.findings.end(), [](const Finding& finding) {
            return finding.code == FindingCode::POutOfRange;
        });
    if (!isKnown && outside != reading.findings.end() && outside->count * 100 > reading.kept)
        add(findings, FindingCode::LogAsP, {0, reading.layout->pValue.name, {}});
}

void addChromosomeFindings(Diagnosis& diagnosis) {
    Finding few{FindingCode::FewMarkers, 0, {}, 0}, equal{FindingCode::EqualPositions, 0, {}, 0},
        spellings{FindingCode::SeveralSpellings, 0, {}, 0};
    QHash<QByteArray, QByteArray> labels; // by what they stand for
    for (const ChromosomeFacts& facts : diagnosis.reading.chromosomes) {
        if (facts.markers == 0)
            continue;
        const QString label = textOf(facts.label);
        if (facts.loaded < 2)
            few.add({facts.firstLine, {}, label});
        else if (facts.firstPosition == facts.lastPosition)
            equal.add({facts.firstLine, {}, label});
        QByteArray& first = labels[chromosomeKey(
            {facts.label.constData(), static_cast<size_t>(facts.label.size())})];
        if (first.isNull())
            first = facts.label.isNull() ? QByteArray("") : facts.label;
        else
            spellings.add({facts.firstLine, {}, textOf(first) + QLatin1String(" and ") + label});
    }
    for (const Finding& finding : {few, equal, spellings})
        if (finding.count > 0)
            diagnosis.findings.append(finding);
}

void addDoubts(Diagnosis& diagnosis) {
    const auto* refusal = std::get_if<Refusal>(&diagnosis.right);
    if (refusal != nullptr && diagnosis.reading.rows > 0 &&
        diagnosis.reading.layout->headerLines > 0)
        add(diagnosis.findings, FindingCode::ColumnsInDoubt, {refusal->line, {}, refusal->message});
}

bool endsTheWindow(FindingCode code) {
    return code == FindingCode::PNotANumber || code == FindingCode::PTooSmall ||
           code == FindingCode::PositionNotWhole || code == FindingCode::PositionTooLarge ||
           code == FindingCode::ShortLine;
}

bool isMisreading(FindingCode code) {
    return code == FindingCode::WrongChromosome || code == FindingCode::WrongPosition ||
           code == FindingCode::WrongP || code == FindingCode::LogAsP ||
           code == FindingCode::NamesAsChromosomes;
}

// What a wrong column makes of the file is no fault of the file's.
void removeConsequences(QList<Finding>& findings) {
    const auto has = [&](FindingCode code) {
        return std::any_of(findings.begin(), findings.end(),
                           [&](const Finding& finding) { return finding.code == code; });
    };
    const bool isOtherP = has(FindingCode::WrongP) || has(FindingCode::LogAsP);
    const bool isOtherLabel =
        has(FindingCode::WrongChromosome) || has(FindingCode::NamesAsChromosomes);
    const bool isOtherPosition = has(FindingCode::WrongPosition);
    findings.removeIf([&](const Finding& finding) {
        switch (finding.code) {
        case FindingCode::POutOfRange:
        case FindingCode::PZero:
            return isOtherP;
        case FindingCode::ChromosomeReturns:
        case FindingCode::FewMarkers:
        case FindingCode::SeveralSpellings:
            return isOtherLabel;
        case FindingCode::PositionsUnsorted:
        case FindingCode::EqualPositions:
            return isOtherLabel || isOtherPosition;
        case FindingCode::PositionNotPositive:
            return isOtherPosition;
        default:
            return false;
        }
    });
}

// The first line at which the window ends; 0 where it reads the whole file.
qint64 firstFault(const QList<Finding>& findings) {
    qint64 line = 0;
    for (const Finding& finding : findings)
        if (endsTheWindow(finding.code) && (line == 0 || finding.first[0].line < line))
            line = finding.first[0].line;
    return line;
}

// One chromosome is loaded at once, and the window ends where that has fewer than two markers.
bool isLoadable(const WindowReading& reading) {
    return reading.kept >= 2 &&
           (!reading.isOneChromosome ||
            std::any_of(reading.chromosomes.begin(), reading.chromosomes.end(),
                        [](const ChromosomeFacts& facts) { return facts.loaded >= 2; }));
}

Verdict verdictOf(Diagnosis& diagnosis, const FileFacts& file) {
    const WindowReading& reading = diagnosis.reading;
    if (reading.refusal || file.pathBytes > windowPathBytes)
        return Verdict::Refuses;
    diagnosis.endsAtLine = firstFault(reading.findings);
    if (diagnosis.endsAtLine > 0)
        return Verdict::EndsAtLine;
    if (!isLoadable(reading)) {
        add(diagnosis.findings, FindingCode::TooFewMarkers, {0, {}, QString::number(reading.kept)});
        return Verdict::Refuses;
    }
    if (std::any_of(diagnosis.findings.begin(), diagnosis.findings.end(),
                    [](const Finding& finding) { return isMisreading(finding.code); }))
        return Verdict::Misreads;
    return diagnosis.findings.isEmpty() ? Verdict::Opens : Verdict::OpensBut;
}

} // namespace

Severity severity(FindingCode code) {
    return code <= FindingCode::NamesAsChromosomes ? Severity::Error : Severity::Warning;
}

Diagnosis diagnose(const FileFacts& file, WindowReading reading,
                   std::variant<Understanding, Refusal> right) {
    Diagnosis diagnosis;
    diagnosis.reading = std::move(reading);
    diagnosis.right = std::move(right);
    diagnosis.findings = diagnosis.reading.findings;
    addFileFindings(file, diagnosis);
    const auto* understanding = std::get_if<Understanding>(&diagnosis.right);
    const std::optional<Layout>& layout = diagnosis.reading.layout;
    if (layout && understanding != nullptr && !file.head.isEmpty())
        diagnosis.columns =
            compareColumns(*layout, *understanding,
                           {file.head.constData(), static_cast<size_t>(file.head.size())});
    addHeaderFindings(file, diagnosis);
    if (diagnosis.reading.refusal) {
        if (file.packing == QLatin1String("plain") && file.foreignKind.isEmpty()) {
            addRefusal(*diagnosis.reading.refusal, diagnosis);
            if (diagnosis.reading.refusal->code == FaultCode::IncorrectColumns)
                diagnosis.missingRoles = missingRoles(file.head);
        }
    } else {
        addColumnFindings(diagnosis);
        addValueFindings(diagnosis);
        addChromosomeFindings(diagnosis);
        addDoubts(diagnosis);
        removeConsequences(diagnosis.findings);
    }
    diagnosis.verdict = verdictOf(diagnosis, file);
    std::stable_sort(diagnosis.findings.begin(), diagnosis.findings.end(),
                     [](const Finding& a, const Finding& b) { return a.code < b.code; });
    return diagnosis;
}

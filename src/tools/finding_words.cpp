#include "finding_words.h"

namespace {

// What a finding says. %1 is the text at fault, %2 the column that the window takes.
struct Words {
    FindingCode code;
    const char* name;
    const char* text;
};

constexpr Words words[] = {
    {FindingCode::PNotANumber, "p-not-a-number", "%2 is \"%1\", which is no number (write NA)"},
    {FindingCode::PTooSmall, "p-too-small",
     "%2 is \"%1\", smaller than any number that the window reads (write 4.94065645841247e-324)"},
    {FindingCode::PositionNotWhole, "position-not-whole",
     "%2 is \"%1\", which is no whole number of base pairs (write digits only, or delete the "
     "line)"},
    {FindingCode::PositionTooLarge, "position-too-large",
     "%2 is \"%1\"; the window reads positions up to 2147483647 (delete the line)"},
    {FindingCode::ShortLine, "short-line",
     "the line ends before column %2 (complete or delete it): \"%1\""},
    {FindingCode::NoDelimiter, "no-delimiter",
     "the first line has no tab, space or comma, so that the window finds no columns: \"%1\""},
    {FindingCode::TooFewColumns, "too-few-columns",
     "the first line has fewer than three columns: \"%1\""},
    {FindingCode::MissingTitles, "missing-titles", "%1"},
    {FindingCode::TooFewMarkers, "too-few-markers",
     "markers that the window can show: %1; it needs two at least"},
    {FindingCode::PathTooLong, "path-too-long",
     "the path has %1 bytes, and the window keeps 200 (move the file to a folder with a shorter "
     "path)"},
    {FindingCode::ForeignFile, "not-a-table",
     "this is no text but %1 (export the table as text, then check that)"},
    {FindingCode::Packed, "compressed",
     "the file is compressed by %1, which the window does not unpack"},
    {FindingCode::LoneReturns, "lone-returns",
     "a carriage return alone ends each line; the window drops it, and the file is one line"},
    {FindingCode::WrongChromosome, "wrong-chromosome-column",
     "the window takes \"%2\" for the chromosome"},
    {FindingCode::WrongPosition, "wrong-position-column",
     "the window takes \"%2\" for the position"},
    {FindingCode::WrongP, "wrong-p-column", "the window takes \"%2\" for p"},
    {FindingCode::LogAsP, "log-as-p",
     "the window takes \"%2\" for p, but it holds logarithms of p, which the window would take the "
     "logarithm of"},
    {FindingCode::NamesAsChromosomes, "names-as-chromosomes",
     "the window takes \"%2\" for the chromosome, but it holds marker names: nearly every line "
     "would "
     "be a chromosome of its own"},
    {FindingCode::ColumnsInDoubt, "columns-in-doubt",
     "whether the window takes the right columns cannot be told. %1"},
    {FindingCode::PZero, "p-zero",
     "%2 is %1: the window leaves this marker out, and it may be the strongest"},
    {FindingCode::PTiny, "p-tiny",
     "%2 is %1: drawn, but a table that the window saves may have 0 here, and lose the marker when "
     "it "
     "is opened again (keep this file)"},
    {FindingCode::PNotFinite, "p-not-finite",
     "%2 is \"%1\": the window takes it for a number, and its picture is spoilt (write NA)"},
    {FindingCode::POutOfRange, "p-out-of-range", "%2 is %1, which no p-value can be (write NA)"},
    {FindingCode::PositionNotPositive, "position-not-positive",
     "%2 is %1, which is no place on a chromosome (delete the line)"},
    {FindingCode::ChromosomeReturns, "chromosome-returns",
     "chromosome \"%1\" comes back after others: when picked, only its first stretch is loaded"},
    {FindingCode::PositionsUnsorted, "positions-unsorted",
     "position %1: the first and the last line of a chromosome tell the window its range"},
    {FindingCode::FewMarkers, "one-marker",
     "chromosome \"%1\" loads fewer than two markers: picking it ends the window"},
    {FindingCode::EqualPositions, "equal-positions",
     "chromosome \"%1\" begins and ends at the same position: the window cannot draw it"},
    {FindingCode::SeveralSpellings, "several-spellings",
     "%1 are the same chromosome, which the window shows as two"},
    {FindingCode::SeveralTests, "several-tests",
     "several tests share the file (%1): the window draws every marker once for each"},
    {FindingCode::CommentLines, "comment-lines",
     "the file begins with ## lines; the window takes the first line for the titles"},
    {FindingCode::Quotes, "quotes",
     "fields are quoted; to the window the quotes are part of the text"},
    {FindingCode::CommaAndSpace, "comma-and-space",
     "commas separate the columns, but the first line has a space, at which the window splits it"},
    {FindingCode::AlignedColumns, "aligned-columns",
     "runs of spaces align the columns; to the window each space ends a column"},
    {FindingCode::FileName, "file-name",
     "the name ends in neither .txt nor .csv: the window's dialog hides the file (rename it)"},
    {FindingCode::PathFull, "path-full",
     "the path has %1 bytes, the most that the window keeps (do not move the file any deeper)"},
};

const Words& wordsOf(FindingCode code) {
    for (const Words& candidate : words)
        if (candidate.code == code)
            return candidate;
    Q_UNREACHABLE();
}

QString titleNeeded(const QString& role) {
    if (role == QLatin1String("chromosome"))
        return QStringLiteral("chromosome (a title with chr, some or id)");
    if (role == QLatin1String("position"))
        return QStringLiteral("position (a title with pos)");
    return QStringLiteral("p (P alone, or a title with pval or p-val)");
}

QString missing(const Diagnosis& diagnosis) {
    if (diagnosis.missingRoles.isEmpty())
        return QStringLiteral("the window finds no titles in the first line");
    QList<QString> needed;
    for (const QString& role : diagnosis.missingRoles)
        needed.append(titleNeeded(role));
    return QStringLiteral("no title tells the window the ") +
           needed.join(QLatin1String(" nor the "));
}

// What the window takes where that is wrong, and what it should.
QString rightColumn(const ComparedColumn& column) {
    if (column.rightNumber == 0 || column.isRight)
        return {};
    QString text = QStringLiteral("; the right column is \"%1\" (column %2)")
                       .arg(column.rightTitle, QString::number(column.rightNumber));
    if (column.line > 0)
        text += QStringLiteral(": on this line the window reads \"%1\" instead of \"%2\"")
                    .arg(column.windowText, column.rightText);
    return text;
}

QString addition(FindingCode code, const Diagnosis& diagnosis) {
    if (!diagnosis.columns)
        return {};
    switch (code) {
    case FindingCode::WrongChromosome:
    case FindingCode::NamesAsChromosomes:
        return rightColumn(diagnosis.columns->chromosome);
    case FindingCode::WrongPosition:
        return rightColumn(diagnosis.columns->position);
    case FindingCode::WrongP:
        return rightColumn(diagnosis.columns->p);
    default:
        return {};
    }
}

} // namespace

QLatin1String nameOf(FindingCode code) {
    return QLatin1String(wordsOf(code).name);
}

QString sentence(const Finding& finding, const Place& place, const Diagnosis& diagnosis) {
    if (finding.code == FindingCode::MissingTitles)
        return missing(diagnosis);
    const auto& columns = diagnosis.columns;
    const bool isSeen =
        (finding.code == FindingCode::LogAsP && !(columns && columns->isLog)) ||
        (finding.code == FindingCode::NamesAsChromosomes && columns && columns->chromosome.isRight);
    // In one step, since the texts are the file's and may hold a percent sign.
    QString text = QString::fromUtf8(wordsOf(finding.code).text);
    if (isSeen)
        text.replace(QLatin1String("it holds"), QLatin1String("it seems to hold"));
    const bool hasColumn = text.contains(QLatin1String("%2"));
    const bool hasText = text.contains(QLatin1String("%1"));
    if (hasColumn && hasText)
        text = text.arg(place.text, place.column);
    else if (hasText)
        text = text.arg(place.text);
    else if (hasColumn)
        text.replace(QLatin1String("%2"), place.column);
    return text + addition(finding.code, diagnosis);
}

QLatin1String nameOf(Verdict verdict) {
    switch (verdict) {
    case Verdict::Opens:
        return QLatin1String("opens");
    case Verdict::OpensBut:
        return QLatin1String("opens-but");
    case Verdict::Misreads:
        return QLatin1String("misreads");
    case Verdict::EndsAtLine:
        return QLatin1String("ends");
    case Verdict::Refuses:
        return QLatin1String("refuses");
    }
    Q_UNREACHABLE();
}

QString sentence(const Diagnosis& diagnosis) {
    switch (diagnosis.verdict) {
    case Verdict::Opens:
        return QStringLiteral("opens");
    case Verdict::OpensBut:
        return QStringLiteral("opens, but see the warnings");
    case Verdict::Misreads:
        return QStringLiteral("misreads: it opens with a wrong column");
    case Verdict::EndsAtLine:
        return QStringLiteral("ends at line %1").arg(diagnosis.endsAtLine);
    case Verdict::Refuses:
        return QStringLiteral("refuses");
    }
    Q_UNREACHABLE();
}

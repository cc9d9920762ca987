#include "support/reading.h"
#include "support/reading_check.h"

#include <QTest>

// The first line, which sets how a file is read, the lines after it, and where faults are.
//
// Wherever a file can be read, it holds the same two points: label 7, positions 12345 and 23456,
// p 0.001 and 0.01. All other columns hold numbers that would do for any of the three, so that a
// swapped column shows.
class FileFormat : public QObject {
    Q_OBJECT

private slots:
    void firstLine_data();
    void firstLine();
    void titles_data();
    void titles();
    void dataLines_data();
    void dataLines();
    void faultPlaces_data();
    void faultPlaces();
};

namespace {

const char* const bothPointsScanned = "7: 1 112 = 3 2";
const char* const bothPointsLoaded = "12345 23456 = 3 2";
const char* const noPointsScanned = "few genome points";
const char* const noPointsLoaded = "few chromosome points";
const char* const noColumns = "wrong columns";
const char* const noDelimiter = "no delimiter";
const char* const fewColumns = "few columns";
const char* const badPValue = "bad p-value";
const char* const badPosition = "bad position";

void addColumns() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("scan");
    QTest::addColumn<QString>("load");
}

void row(const char* name, const QByteArray& file, const char* scan, const char* load) {
    QTest::newRow(name) << file << QString(scan) << QString(load);
}

void readableRow(const char* name, const QByteArray& file) {
    row(name, file, bothPointsScanned, bothPointsLoaded);
}

void faultRow(const char* name, const QByteArray& file, const char* fault) {
    row(name, file, fault, fault);
}

void emptyRow(const char* name, const QByteArray& file) {
    row(name, file, noPointsScanned, noPointsLoaded);
}

void check() {
    QFETCH(QByteArray, file);
    QFETCH(QString, scan);
    QFETCH(QString, load);
    checkReading(file, QStringLiteral("7"), scan, load);
}

} // namespace

void FileFormat::firstLine_data() {
    addColumns();
    readableRow("tabs", "chr\tpos\tpval\n7\t12345\t0.001\n7\t23456\t0.01\n");
    readableRow("spaces", "chr pos pval\n7 12345 0.001\n7 23456 0.01\n");
    readableRow("commas", "chr,pos,pval\n7,12345,0.001\n7,23456,0.01\n");
    readableRow("a tab beats a space", "chr\tpos here\tpval\n7\t12345\t0.001\n7\t23456\t0.01\n");
    readableRow("a tab beats a comma", "chr\tpos,here\tpval\n7\t12345\t0.001\n7\t23456\t0.01\n");
    readableRow("a space beats a comma", "chr pos,here pval\n7 12345 0.001\n7 23456 0.01\n");
    readableRow("a tab at the end beats all", "a b,c\tchr\tpos\tpval\t\n"
                                              "x\t7\t12345\t0.001\t\nx\t7\t23456\t0.01\t\n");
    faultRow("commas and a title of two words are split at the space",
             "chr,pos,p value\n7,12345,0.001\n7,23456,0.01\n", fewColumns);
    faultRow("a semicolon", "chr;pos;pval\n7;12345;0.001\n", noDelimiter);
    faultRow("a delimiter on the second line only", "chr\n7\t12345\t0.001\n", noDelimiter);
    faultRow("one word and no line end", "chr", noDelimiter);
    faultRow("an empty first line", "\nchr\tpos\tpval\n7\t12345\t0.001\n", noDelimiter);
    faultRow("two columns", "chr\tpos\n7\t12345\t0.001\n7\t23456\t0.01\n", fewColumns);
    faultRow("two columns of numbers", "7,12345\n7,23456,0.01\n", fewColumns);
    faultRow("one delimiter and nothing else", "\t\n7\t12345\t0.001\n", fewColumns);
    faultRow("two delimiters and nothing else", "\t\t\n7\t12345\t0.001\n", noColumns);
    emptyRow("an empty file", "");
    emptyRow("a header alone", "chr\tpos\tpval\n");
    emptyRow("a header alone without a line end", "chr\tpos\tpval");
    readableRow("no header: the first line is a point", "7,12345,0.001\n7,23456,0.01\n");
    readableRow("no header, more columns", "7\t12345\t0.001\t8\t0.5\n7\t23456\t0.01\t9\t0.6\n");
    faultRow("no header, a label that is no number", "chr1\t12345\t0.001\n7\t23456\t0.01\n",
             noColumns);
    faultRow("no header, a missing p-value on the first line", "7\t12345\tNA\n7\t23456\t0.01\n",
             noColumns);
    faultRow("no header, an empty last field", "7\t12345\t0.001\t\n7\t23456\t0.01\t\n", noColumns);
    readableRow("no header, nan and inf are numbers",
                "7\t12345\t0.001\tnan\tinf\t-1e5\n7\t23456\t0.01\n");
    faultRow("one text among numbers makes a header", "7\t12345\t0.001\trs1\n7\t23456\t0.01\trs2\n",
             noColumns);
    readableRow("a header with numbers in it",
                "0\t1e3\tchr\t-5\tpos\tpval\n"
                "1\t2\t7\t4\t12345\t0.001\n1\t2\t7\t4\t23456\t0.01\n");
}

void FileFormat::firstLine() {
    check();
}

void FileFormat::titles_data() {
    addColumns();
    faultRow("CHR BP P", "CHR\tBP\tP\n7\t12345\t0.001\n", noColumns);
    readableRow("chr pos pval", "chr pos pval\n7 12345 0.001\n7 23456 0.01\n");
    readableRow("those of a saved table", "Chr\tPosition\tP\t-log10(P)\n"
                                          "7\t12345\t0.001\t3\n7\t23456\t0.01\t2\n");
    readableRow("a marker's name before the chromosome is the label",
                "MarkerID,Chromosome,Position,Pvalue\n7,11,12345,0.001\n7,12,23456,0.01\n");
    readableRow("a marker's name after the chromosome is not",
                "Chromosome,MarkerID,Position,Pvalue\n7,11,12345,0.001\n7,12,23456,0.01\n");
    readableRow("SNPid", "beta SNPid chr pos p\n1 7 3 12345 0.001\n1 7 4 23456 0.01\n");
    readableRow("awesome", "beta awesome chr pos p\n1 7 3 12345 0.001\n1 7 4 23456 0.01\n");
    readableRow("P-value", "chr,pos,P-value\n7,12345,0.001\n7,23456,0.01\n");
    readableRow("p-VALUE", "chr,pos,x,p-VALUE\n7,12345,8,0.001\n7,23456,9,0.01\n");
    readableRow("Pval", "chr,pos,Pval\n7,12345,0.001\n7,23456,0.01\n");
    readableRow("PVALUE", "chr,pos,PVALUE\n7,12345,0.001\n7,23456,0.01\n");
    readableRow("neglog10_pval is a p-value too",
                "chr,pos,neglog10_pval,pval\n7,12345,0.001,0.5\n7,23456,0.01,0.6\n");
    readableRow("p", "p,chr,pos\n0.001,7,12345\n0.01,7,23456\n");
    readableRow("P", "P,chr,pos\n0.001,7,12345\n0.01,7,23456\n");
    readableRow("P only as the whole title",
                "xP,P-,Px,P,chr,pos\n1,2,3,0.001,7,12345\n1,2,3,0.01,7,23456\n");
    faultRow("prob", "chr,pos,prob\n7,12345,0.001\n7,23456,0.01\n", noColumns);
    faultRow("p_value", "chr,pos,p_value\n7,12345,0.001\n7,23456,0.01\n", noColumns);
    faultRow("p with a space at its end", "chr\tpos\tp \n7\t12345\t0.001\n", noColumns);
    faultRow("P in quotes", "chr,pos,\"P\"\n7,12345,0.001\n", noColumns);
    faultRow("no chromosome", "ch,pos,pval\n7,12345,0.001\n", noColumns);
    faultRow("no position", "chr,base,pval\n7,12345,0.001\n", noColumns);
    readableRow("CHROM POS PVAL", "CHROM,POS,PVAL\n7,12345,0.001\n7,23456,0.01\n");
    readableRow("a word within a word in capitals",
                "xyCHRz,xySNPOSz,xPVALz\n7,12345,0.001\n7,23456,0.01\n");
    readableRow("ID", "ID,POSITION,P\n7,12345,0.001\n7,23456,0.01\n");
    readableRow("SOME", "SOME,POSITION,P\n7,12345,0.001\n7,23456,0.01\n");
    readableRow("the leftmost of several", "chr,pos,pval,chr2,pos2,pval2\n"
                                           "7,12345,0.001,8,1,0.5\n7,23456,0.01,9,2,0.6\n");
    readableRow("the leftmost, not the best", "a,position,Pos,x_pval,P,chrom,chr\n"
                                              "1,12345,2,0.001,0.5,7,8\n1,23456,3,0.01,0.6,7,9\n");
    readableRow("columns from right to left", "a,pval,b,pos,c,chr\n"
                                              "1,0.001,2,12345,3,7\n4,0.01,5,23456,6,7\n");
    row("one title for two columns", "chrpos,a,pval\n7,1,0.001\n7,2,0.01\n", "7: 1 1 = 3 2",
        "7 7 = 3 2");
    row("one title for all three columns", "chrpospval,a,b\n7,1,2\n7,3,4\n",
        "7: 1 1 = -0.8450980400142568 -0.8450980400142568",
        "7 7 = -0.8450980400142568 -0.8450980400142568");
}

void FileFormat::titles() {
    check();
}

void FileFormat::dataLines_data() {
    addColumns();
    const QByteArray header = "chr\tpos\tpval\trest\n";
    const QByteArray first = "7\t12345\t0.001\t1\n", second = "7\t23456\t0.01\t2\n";
    const auto between = [&](const QByteArray& lines) { return header + first + lines + second; };
    readableRow("empty lines", header + "\n\n" + first + "\n" + second + "\n\n\n");
    faultRow("a line of one space", between(" \n"), noColumns);
    faultRow("a line of one space at the end", between("") + " ", noColumns);
    row("a line of two spaces in a file of spaces",
        "chr pos pval\n7 12345 0.001\n  \n7 23456 0.01\n", badPValue, noPointsLoaded);
    faultRow("a short line", between("7\t5\n"), noColumns);
    faultRow("a short line of no delimiter", between("7\n"), noColumns);
    faultRow("a short line, its p-value missing", between("7\tNA\n"), noColumns);
    faultRow("a short line of another label before the label's own", header + "8\t5\n" + first,
             noColumns);
    row("a short line of another label after the label's own",
        header + first + second + "8\t5\t0.1\n8\t5\n", noColumns, bothPointsLoaded);
    faultRow("a short line that ends the label's own", header + first + second + "8\t5\n",
             noColumns);
    readableRow("a line just long enough", between("7\t5\tNA\n"));
    readableRow("fields beyond the columns", between("7\t5\tNA\t1\t2\t3\t4\t5\n"));
    faultRow("only the largest column counts",
             "pval\tpos\tx\tchr\n0.001\t12345\t0\t7\n0.01\t23456\t0\n", noColumns);
    readableRow("two delimiters in a row hold an empty field",
                "chr\t\tpos\tx\tpval\n7\t\t12345\t\t0.001\n7\t\t23456\t\t0.01\n");
    faultRow("a delimiter more moves the fields", between("7\t\t5\t0.1\n"), badPosition);
    faultRow("an empty p-value", between("7\t5\t\t1\n"), badPValue);
    faultRow("an empty position", between("7\t\t0.5\t1\n"), badPosition);
    row("an empty label", between("\t5\t0.5\t1\n"), "7||7: 1 2 3 = 3 0.3010299956639812 2",
        noPointsLoaded);
    readableRow("NA is skipped", between("7\tx\tNA\t1\n"));
    faultRow("na", between("7\t5\tna\t1\n"), badPValue);
    faultRow("N/A", between("7\t5\tN/A\t1\n"), badPValue);
    faultRow("Na", between("7\t5\tNa\t1\n"), badPValue);
    faultRow("NA with a space", between("7\t5\tNA \t1\n"), badPValue);
    faultRow("NAN is no missing value", between("7\tx\tNAN\t1\n"), badPosition);
    readableRow("a p-value of 0, its position not looked at",
                between("7\tx\t0\t1\n7\t\t0.0\t1\n7\t1.5\t0e0\t1\n7\t9\t-0\t1\n"));
    faultRow("a bad p-value is reported before a bad position", between("7\tx\ty\t1\n"), badPValue);
    row("a bad line after other points", between("8\t5\tx\t1\n"), badPValue, noPointsLoaded);
    row("a bad position of another label", between("8\tx\t0.5\t1\n"), badPosition, noPointsLoaded);
    row("a bad line of another label before", header + "8\tx\ty\t1\n" + first + second, badPValue,
        bothPointsLoaded);
    row("labels are neither trimmed nor folded",
        "chr\tpos\tpval\n7\t100\t0.1\n7 \t200\t0.1\n 7\t300\t0.1\nchr7\t400\t0.1\nCHR7\t500\t0.1\n"
        "07\t600\t0.1\n",
        "7|7 | 7|chr7|CHR7|07: 1 2 3 4 5 6 = 1 1 1 1 1 1", noPointsLoaded);
    readableRow("quotes are part of the text",
                "\"chr\"\tpos\tpval\n7\t12345\t0.001\n7\t23456\t0.01\n");
    faultRow("a quoted number is none", between("7\t5\t\"0.5\"\t1\n"), badPValue);
    faultRow("a quoted delimiter splits", "chr,pos,pval\n7,12345,0.001\n7,\"23,456\",0.01\n",
             badPValue);
    row("a header's repetition is a line like any other", between(header), badPValue,
        noPointsLoaded);
    emptyRow("all missing", header + "7\t5\tNA\t1\n7\t6\tNA\t1\n");
    emptyRow("all zero", header + "7\t5\t0\t1\n7\t6\t0.0\t1\n");
    emptyRow("one point", header + first);
}

void FileFormat::dataLines() {
    check();
}

void FileFormat::faultPlaces_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("place");
    const auto row = [](const char* name, const QByteArray& file, const QString& place) {
        QTest::newRow(name) << file << place;
    };
    const QByteArray header = "chr\tpos\tx\tpval\n", good = "7\t1\t0\t0.1\n";
    row("no delimiter", "chr;pos\n", "line 1, column : chr;pos");
    row("few columns", "chr pos\n1 2\n", "line 1, column : chr pos");
    row("a title that is missing", "chr,base,pval\n", "line 1, column : chr,base,pval");
    row("a p-value", header + good + "7\t2\t0\t<1\n", "line 3, column pval: <1");
    row("a position", header + "7\t2.5\t0\t0.1\n", "line 2, column pos: 2.5");
    row("empty lines count", header + "\n\r\n" + good + "\n7\t2\t0\tx\n", "line 6, column pval: x");
    row("without titles, columns have numbers", "7,1,0.1\n7,x,0.1\n", "line 2, column 2: x");
    row("a short line", header + good + "7\t2\t0\n", "line 3, column pval: 7\t2\t0");
    row("the leftmost column that is missing", header + "7\n" + good, "line 2, column pos: 7");
    row("a last line without an end", header + good + "7\t2\t0\tx", "line 3, column pval: x");
    row("too few points", header + good, "line 0, column : ");
    row("a long text is cut", header + "7\t2\t0\t" + QByteArray(150, 'x') + "\n",
        "line 2, column pval: " + QString(100, u'x'));
    row("characters are counted, not bytes",
        header + "7\t2\t0\t" + QString(150, QChar(0x4e2d)).toUtf8() + "\n",
        "line 2, column pval: " + QString(100, QChar(0x4e2d)));
    row("after many blocks", header + good.repeated(100'000) + "7\t2\t0\tx\n",
        "line 100002, column pval: x");
}

void FileFormat::faultPlaces() {
    QFETCH(QByteArray, file);
    QTEST(placeOf(std::get<Fault>(plainScan(file))), "place");
    for (const qsizetype blockSize : {defaultBlockSize, qsizetype(7), qsizetype(4096)})
        QTEST(placeOf(std::get<Fault>(scan(file, blockSize))), "place");
}

QTEST_GUILESS_MAIN(FileFormat)
#include "tst_file_format.moc"

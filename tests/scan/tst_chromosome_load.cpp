#include "support/reading.h"

#include <QTest>

// Which lines of a file are loaded as one chromosome.
class ChromosomeLoad : public QObject {
    Q_OBJECT

private slots:
    void run_data();
    void run();
};

namespace {

const QString tooFew = QStringLiteral("few chromosome points");

void row(const char* name, const QByteArray& lines, const char* label, const QString& outcome) {
    QTest::newRow(name) << QByteArray("chr pos p\n" + lines) << QString(label) << outcome;
}

} // namespace

void ChromosomeLoad::run_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("outcome");
    const QByteArray twice = "A 1 .1\nA 2 .01\nB 3 .1\nB 4 .1\nA 5 .1\nA 6 .1\n";
    row("the first of two blocks", twice, "A", "1 2 = 1 2");
    row("a block in the middle", twice, "B", "3 4 = 1 1");
    row("the last block", "A 1 .1\nA 2 .1\nB 3 .1\nB 4 .1\n", "B", "3 4 = 1 1");
    row("the whole file", "A 9 .1\nA 8 .1\nA 9 .1\n", "A", "9 8 9 = 1 1 1");
    row("positions as they are, in base pairs", "A 123456789 .1\nA -99 .1\n", "A",
        "123456789 -99 = 1 1");
    row("a missing p-value belongs to the block", "A 1 .1\nA 2 .1\nA 3 NA\nB 4 .1\nA 5 .1\n", "A",
        "1 2 = 1 1");
    row("a block of a missing p-value ends like any other", "A 1 NA\nB 2 .1\nA 3 .1\nA 4 .1\n", "A",
        tooFew);
    row("a p-value of 0 belongs to the block", "A 1 0\nB 2 .1\nA 3 .1\nA 4 .1\n", "A", tooFew);
    row("a skipped line of another label ends the block",
        "A 1 .1\nA 2 .1\nB 9 NA\nA 3 .1\nA 4 .1\n", "A", "1 2 = 1 1");
    row("so does one whose p-value is 0", "A 1 .1\nA 2 .1\nB 9 0\nA 3 .1\n", "A", "1 2 = 1 1");
    row("so does one that is malformed", "A 1 .1\nA 2 .1\nB y x\nA 3 .1\n", "A", "1 2 = 1 1");
    row("an empty line does not", "A 1 .1\n\nA 2 .1\n\n\nA 3 .1\n", "A", "1 2 3 = 1 1 1");
    row("malformed lines before the block are not parsed", "B x y\nC 1.5 .1\nA 1 .1\nA 2 .1\n", "A",
        "1 2 = 1 1");
    row("nor are those after it", "A 1 .1\nA 2 .1\nB 1 .1\nA x y\nB x y\n", "A", "1 2 = 1 1");
    row("a malformed p-value in the block", "B 1 .1\nA 1 .1\nA 2 x\n", "A", "bad p-value");
    row("a malformed position in the block", "B 1 .1\nA 1 .1\nA x .1\n", "A", "bad position");
    row("a malformed position beside a missing p-value", "A 1 .1\nA x NA\nA y 0\nA 2 .1\n", "A",
        "1 2 = 1 1");
    row("both malformed", "A y x\n", "A", "bad p-value");
    row("a short line before the block", "B 1\nA 1 .1\nA 2 .1\n", "A", "wrong columns");
    row("a short line right after the block", "A 1 .1\nA 2 .1\nB 1\n", "A", "wrong columns");
    row("a short line further on", "A 1 .1\nA 2 .1\nB 1 .1\nB 1\n", "A", "1 2 = 1 1");
    row("one point", "A 1 .1\nB 2 .1\nB 3 .1\n", "A", tooFew);
    row("one kept point", "A 1 .1\nA 2 NA\nA 3 0\n", "A", tooFew);
    row("exactly two points", "A 1 .1\nA 2 .1\n", "A", "1 2 = 1 1");
    row("a label that does not occur", "A 1 .1\nA 2 .1\n", "C", tooFew);
    row("a label in another case", "A 1 .1\nA 2 .1\n", "a", tooFew);
    row("the beginning of a label", "AB 1 .1\nAB 2 .1\nA 3 .1\nA 4 .1\n", "A", "3 4 = 1 1");
    row("a longer label", "A 1 .1\nA 2 .1\n", "AB", tooFew);
    row("an empty label, its lines first", " 1 .1\n 2 .1\nA 3 .1\n 4 .1\n", "", "1 2 = 1 1");
    row("an empty label, another first: reading stops there", "A 3 .1\n 1 .1\n 2 .1\n", "", tooFew);
    row("an empty label, another malformed one first", "A x y\n 1 .1\n 2 .1\n", "", tooFew);
    row("an empty label, an empty line first", "\n 1 .1\n 2 .1\n", "", "1 2 = 1 1");
    row("no lines", "", "A", tooFew);
    QTest::newRow("no bytes") << QByteArray() << QStringLiteral("A") << tooFew;
    QTest::newRow("no header: the first line counts")
        << QByteArray("1,5,.1\n1,6,.1\n") << QStringLiteral("1") << QStringLiteral("5 6 = 1 1");
}

void ChromosomeLoad::run() {
    QFETCH(QByteArray, file);
    QFETCH(QString, label);
    QTEST(told(load(file, label)), "outcome");
    QTEST(told(plainLoad(file, label)), "outcome");
    for (qsizetype blockSize = 1; blockSize < 12; ++blockSize)
        QTEST(told(load(file, label, blockSize)), "outcome");
}

QTEST_GUILESS_MAIN(ChromosomeLoad)
#include "tst_chromosome_load.moc"

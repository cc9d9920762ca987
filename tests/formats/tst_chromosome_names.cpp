#include "chromosome_names.h"
#include "support/random.h"

#include <QTest>
#include <algorithm>

// Which labels are the same chromosome, in which order chromosomes come, and how they are written.
class ChromosomeLabels : public QObject {
    Q_OBJECT

private slots:
    void keys_data();
    void keys();
    void order();
    void isStrictWeakOrder();
    void unplaced();
    void names_data();
    void names();
    void remarks_data();
    void remarks();
};

namespace {

std::string_view view(const QByteArray& text) {
    return {text.constData(), static_cast<size_t>(text.size())};
}

QByteArray key(const QByteArray& label) {
    return chromosomeKey(view(label));
}

bool before(const QByteArray& a, const QByteArray& b) {
    return isBefore(view(a), view(b));
}

QList<QByteArray> words(const char* text) {
    return QByteArray(text).split(' ');
}

// Chromosomes of people, wheat, flies, birds and genomes of many pieces, in order.
const QList<QByteArray> ordered =
    words("1 1_KI270706v1_random 1A 1B 2 2L 2R 3 7D 10 22 23 26 29 99999999999999999999 X Y Z W XY "
          "MT Gm01 Gm1 Gm2 Gm10 LG1 NC_000002.11 NC_000010.11 sca2 sca2_5 sca2_40 sca10 scaffold_1 "
          "scaffold_02 - 0 NA Un Un_KI270442v1 unplaced");

QString joined(const QList<QByteArray>& texts) {
    return QString::fromUtf8(texts.join(' '));
}

} // namespace

void ChromosomeLabels::keys_data() {
    QTest::addColumn<QByteArray>("spellings");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char* spellings, const char* expected) {
        QTest::newRow(expected) << QByteArray(spellings) << QByteArray(expected);
    };
    row("chr1 1 01 Chr1 CHR01 chr001", "1");
    row("10 chr10 010", "10");
    row("0 00 chr0", "0");
    row("X x chrX chrx CHRX", "X");
    row("XY xy chrXY", "XY");
    row("MT mt M m chrM chrMT", "MT");
    row("1A chr1A chr1a", "1A");
    row("chrUn_gl000220 CHRUN_GL000220", "UN_GL000220");
    row("2L 2l chr2L CHR2l", "2L");
    row("Gm01 gm01", "GM01");
    row("sca02 SCA02", "SCA02");
    row("chr Chr", "CHR");
    row("1.0", "1.0");
}

void ChromosomeLabels::keys() {
    QFETCH(const QByteArray, spellings);
    QFETCH(const QByteArray, expected);
    for (const QByteArray& label : spellings.split(' '))
        QCOMPARE(key(label), expected);
    QCOMPARE(key(""), QByteArray());
}

void ChromosomeLabels::order() {
    Random random(runSeed());
    for (int i = 0; i < 200; ++i) {
        QList<QByteArray> labels = ordered;
        for (qsizetype end = labels.size(); end > 1; --end)
            labels.swapItemsAt(end - 1, random.below(static_cast<int>(end)));
        std::sort(labels.begin(), labels.end(), before);
        QCOMPARE(joined(labels), joined(ordered));
    }
}

void ChromosomeLabels::isStrictWeakOrder() {
    QList<QByteArray> labels = ordered + words("chr1 CHR2L chrx M chrM m chrUn chr0 00 GM01 gm1 xy "
                                               "sca02 sca002 SCA2 a1b a01b a1c a-1 a a1 1-2 1.2");
    labels += QByteArray();
    for (const QByteArray& a : labels) {
        QVERIFY(!before(a, a));
        for (const QByteArray& b : labels) {
            const bool isEqual = !before(a, b) && !before(b, a);
            QVERIFY2(isEqual == (key(a) == key(b)), a + ' ' + b);
            QVERIFY2(!(before(a, b) && before(b, a)), a + ' ' + b);
            for (const QByteArray& c : labels)
                QVERIFY2(!before(a, b) || !before(b, c) || before(a, c), a + ' ' + b + ' ' + c);
        }
    }
}

void ChromosomeLabels::unplaced() {
    for (const char* label : {"0", "00", "chr0", "Un", "chrUn", "UN", "NA", "na", "", ".", "-9",
                              "Un_gl000220", "chrUn_KI270442v1", "unplaced", "chrU"})
        QVERIFY2(isUnplaced(chromosomeKey(label).toStdString()), label);
    for (const char* label : {"1", "10", "X", "MT", "Unicorn1", "scaffold_0", "0A", "chr"})
        QVERIFY2(!isUnplaced(label), label);
}

void ChromosomeLabels::names_data() {
    QTest::addColumn<QByteArray>("labels");
    QTest::addColumn<QByteArray>("kept");
    QTest::addColumn<QByteArray>("plain");
    QTest::addColumn<QByteArray>("chr");
    QTest::addColumn<bool>("isPlink");
    QTest::addColumn<bool>("isSsf");
    const auto row = [](const char* name, const char* labels, const char* kept, const char* plain,
                        const char* chr, bool isPlink = false, bool isSsf = false) {
        QTest::newRow(name) << QByteArray(labels) << QByteArray(kept) << QByteArray(plain)
                            << QByteArray(chr) << isPlink << isSsf;
    };
    row("spellings", "chr1 1 01 2 Chr2", "chr1 chr1 chr1 2 2", "1 1 1 2 2",
        "chr1 chr1 chr1 chr2 chr2");
    row("zeros", "01 1 02", "01 01 02", "1 1 2", "chr1 chr1 chr2");
    row("letters", "chrx Y chrM", "chrx Y chrM", "X Y MT", "chrX chrY chrM");
    row("M and MT", "M MT", "M M", "MT MT", "chrM chrM");
    row("numbers", "22 23 24", "22 23 24", "22 X Y", "chr22 chrX chrY");
    row("25 with 26", "23 25 26", "23 25 26", "X XY MT", "chrX chrXY chrM");
    row("25 alone", "23 25", "23 25", "X 25", "chrX chr25");
    row("25 of PLINK", "chr23 25", "chr23 25", "X XY", "chrX chrXY", true);
    row("25 of SSF", "23 25", "23 25", "X MT", "chrX chrM", false, true);
    row("25 and 26 of SSF", "25 26", "25 26", "XY MT", "chrXY chrM", false, true);
    row("cattle", "23 26 29 X", "23 26 29 X", "23 26 29 X", "chr23 chr26 chr29 chrX", true);
    row("27", "25 chr27", "25 chr27", "25 27", "chr25 chr27", true);
    row("a large number", "23 99999999999", "23 99999999999", "23 99999999999",
        "chr23 chr99999999999");
    row("accessions", "NC_000001.11 NC_000009.11 NC_000023.11 NC_000024 NC_012920.1",
        "NC_000001.11 NC_000009.11 NC_000023.11 NC_000024 NC_012920.1", "1 9 X Y MT",
        "chr1 chr9 chrX chrY chrM");
    row("other accessions", "NC_000067.6 NC_000025.1 NC_000001.x NC_00001.1 NC_000000.1",
        "NC_000067.6 NC_000025.1 NC_000001.x NC_00001.1 NC_000000.1",
        "NC_000067.6 NC_000025.1 NC_000001.x NC_00001.1 NC_000000.1",
        "NC_000067.6 NC_000025.1 NC_000001.x NC_00001.1 NC_000000.1");
    row("wheat, flies, soy", "1A chr2B 2L Gm01 sca10", "1A chr2B 2L Gm01 sca10",
        "1A 2B 2L Gm01 sca10", "chr1A chr2B chr2L Gm01 sca10");
    row("unplaced", "0 Un chrUn_gl000220 NA", "0 Un chrUn_gl000220 NA", "0 Un Un_gl000220 NA",
        "0 Un chrUn_gl000220 NA");
}

void ChromosomeLabels::names() {
    QFETCH(const QByteArray, labels);
    QFETCH(const QByteArray, kept);
    QFETCH(const QByteArray, plain);
    QFETCH(const QByteArray, chr);
    QFETCH(const bool, isPlink);
    QFETCH(const bool, isSsf);
    const auto named = [&](ChromosomeNames names) {
        return nameChromosomes(labels.split(' '), names, isPlink, isSsf).names.join(' ');
    };
    QCOMPARE(named(ChromosomeNames::Keep), kept);
    QCOMPARE(named(ChromosomeNames::Plain), plain);
    QCOMPARE(named(ChromosomeNames::Chr), chr);
}

void ChromosomeLabels::remarks_data() {
    QTest::addColumn<QByteArray>("labels");
    QTest::addColumn<bool>("isPlain");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* labels, bool isPlain, const char* expected) {
        QTest::newRow(name) << QByteArray(labels) << isPlain << QString::fromLatin1(expected);
    };
    row("nothing to say", "1 2 X", false, "");
    row("first spelling", "chr1 1", false, "1 is written chr1, the spelling that came first");
    row("chr left out", "chr1 chr2", true, "");
    row("meanings", "23 26 NC_000001.10", true,
        "23 is written X|26 is written MT|NC_000001.10 is written 1");
    row("25 alone", "1 25", true, "25 is kept: it is XY in some tables and MT in others");
    row("25 among people's", "25 26", true, "25 is written XY|26 is written MT");
    row("cattle", "23 24 29", true,
        "23 to 26 are kept: larger numbers occur, so they are not the human X, Y, XY and MT");
    row("pigs", "18 X", true, "");
}

void ChromosomeLabels::remarks() {
    QFETCH(const QByteArray, labels);
    QFETCH(const bool, isPlain);
    QFETCH(const QString, expected);
    const auto names = isPlain ? ChromosomeNames::Plain : ChromosomeNames::Keep;
    QCOMPARE(nameChromosomes(labels.split(' '), names, false, false).remarks.join(u'|'), expected);
}

QTEST_GUILESS_MAIN(ChromosomeLabels)
#include "tst_chromosome_names.moc"

#include "support/random.h"
#include "support/random_association_file.h"
#include "support/reading.h"

#include <QStringConverter>
#include <QTest>

// The program's reader against the plain one, on very many small and hostile files.
class RandomFiles : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { m_seed = runSeed(); }
    void bothReadersAgree_data();
    void bothReadersAgree();
    void everyCutAtEveryBlockSize();
    void aroundTheStreamsSteps_data();
    void aroundTheStreamsSteps();
    void wideTextAroundTheStreamsSteps();

private:
    std::uint64_t m_seed = 0;
};

namespace {

constexpr int groups = 20;

template <typename T>
bool agree(const Result<T>& result, const Result<T>& expected, const QByteArray& file,
           qsizetype blockSize) {
    if (isSame(result, expected))
        return true;
    qWarning().noquote() << "file (base64)" << file.toBase64() << "\nblock size" << blockSize
                         << "\nexpected" << told(expected) << "\n     got" << told(result);
    return false;
}

// The labels of a file that was read, one by one; `otherwise` where it was not.
QString someLabel(Random& random, const Result<GenomeScan>& scanned, const QString& otherwise) {
    const auto* scan = std::get_if<GenomeScan>(&scanned);
    return scan && !random.oneIn(4) ? random.oneOf(scan->chromosomes).label : otherwise;
}

} // namespace

void RandomFiles::bothReadersAgree_data() {
    QTest::addColumn<int>("group");
    for (int group = 0; group < groups; ++group)
        QTest::addRow("group %d", group) << group;
}

void RandomFiles::bothReadersAgree() {
    QFETCH(int, group);
    Random random(m_seed + static_cast<std::uint64_t>(group));
    int readable = 0;
    const int count = randomCases(200'000) / groups;
    for (int i = 0; i < count; ++i) {
        const RandomAssociationFile file = randomAssociationFile(random);
        const Result<GenomeScan> expectedScan = plainScan(file.bytes);
        const QString label = someLabel(random, expectedScan, file.label);
        const Result<Points> expectedLoad = plainLoad(file.bytes, label);
        for (const qsizetype blockSize : {defaultBlockSize, qsizetype(random.between(1, 64))}) {
            QVERIFY(agree(scan(file.bytes, blockSize), expectedScan, file.bytes, blockSize));
            QVERIFY(agree(load(file.bytes, label, blockSize), expectedLoad, file.bytes, blockSize));
        }
        readable += std::holds_alternative<GenomeScan>(expectedScan);
    }
    // Files that are refused at the first line alone would prove little.
    QVERIFY2(readable > count / 6, qPrintable(QString::number(readable)));
}

// Every place at which a file, or a block of it, can end.
void RandomFiles::everyCutAtEveryBlockSize() {
    const QByteArray whole = "\xef\xbb\xbf"
                             "chr\tpos\tid\tp\r\n"
                             "\xc3\xa9\xe6\x9f\x93\t-12\t7\t1.25E-10\r\n"
                             "\xc3\xa9\xe6\x9f\x93\t1\r3\t7\tNA\n\r\n"
                             "\xc3\xa9\xe6\x9f\x93\t14\t7\t0.30102999566398120\n"
                             "\xf0\x9f\xa7\xac\t15\t\t.5\r\n"
                             "\xf0\x9f\xa7\xac\t16\t\t0.0\n\n\n"
                             "\xf0\x9f\xa7\xac\t17\t\t1e-3\t extra\r\n";
    const QString label = QString::fromUtf8("\xc3\xa9\xe6\x9f\x93");
    for (qsizetype cut = 0; cut <= whole.size(); ++cut) {
        const QByteArray file = whole.left(cut);
        const Result<GenomeScan> expectedScan = plainScan(file);
        const Result<Points> expectedLoad = plainLoad(file, label);
        for (qsizetype blockSize = 1; blockSize <= whole.size() + 1; ++blockSize) {
            QVERIFY(agree(scan(file, blockSize), expectedScan, file, blockSize));
            QVERIFY(agree(load(file, label, blockSize), expectedLoad, file, blockSize));
        }
    }
    QCOMPARE(told(plainScan(whole)),
             label + QString::fromUtf8("|🧬: 1 1 2 2 = 9.903089986991944 0.5213902276543247 "
                                       "0.3010299956639812 3"));
}

void RandomFiles::aroundTheStreamsSteps_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("a byte-order mark") << QByteArray("\xef\xbb\xbf");
    QTest::newRow("two byte-order marks") << QByteArray("\xef\xbb\xbf\xef\xbb\xbf");
    QTest::newRow("a character of four bytes") << QByteArray("\xf0\x9f\xa7\xac");
    QTest::newRow("a character with carriage returns in it") << QByteArray("\xf0\x9f\r\xa7\r\xac");
    QTest::newRow("the first byte of one") << QByteArray("\xf0");
    QTest::newRow("the first three bytes of one") << QByteArray("\xf0\x9f\xa7");
    QTest::newRow("a second byte alone") << QByteArray("\xa7");
    QTest::newRow("a surrogate's code") << QByteArray("\xed\xa0\x80");
    QTest::newRow("bytes that are never UTF-8") << QByteArray("\xff\xfe\xc0\x80");
    QTest::newRow("carriage returns") << QByteArray("\r\r\r");
    QTest::newRow("an empty line") << QByteArray("\r\n\r\n7\t");
}

// The plain reader's text stream decodes in steps of 16384 bytes, and some texts decode differently
// across the end of a step. Each text stands at every place before, on and after such an end.
void RandomFiles::aroundTheStreamsSteps() {
    QFETCH(QByteArray, text);
    constexpr qsizetype step = 16384;
    const QByteArray header = "x\tchr\tpos\tp\n";
    for (const qsizetype end : {step / 2, step, 2 * step}) {
        for (qsizetype place = end - 20; place <= end + 2; ++place) {
            for (const QByteArray& lead : {QByteArray(), QByteArray("\xc3\xa9")}) {
                const QByteArray filler(place - header.size() - lead.size() - 1, 'x');
                const QByteArray file = header + lead + filler + '\t' + text + "\t12\t0.5\n7\t" +
                                        text + "\t13\t0.25\nx\t" + text + "\t14\t1e-3";
                const Result<GenomeScan> expected = plainScan(file);
                for (const qsizetype blockSize : {defaultBlockSize, qsizetype(100), step - 1, step,
                                                  step + 1, place, place + 1, place + 2})
                    QVERIFY(agree(scan(file, blockSize), expected, file.right(80), blockSize));
            }
        }
    }
}

void RandomFiles::wideTextAroundTheStreamsSteps() {
    const QString header = QStringLiteral("x\tchr\tpos\tp\n");
    for (const auto encoding : {QStringConverter::Utf16LE, QStringConverter::Utf16BE}) {
        for (qsizetype place = 8180; place <= 8195; ++place) {
            const QString label = QString::fromUtf8("\r🧬\ufeffé") + QChar(0xd800);
            const QString text = header + QString(place - header.size() - 1, u'x') + u'\t' + label +
                                 QStringLiteral("\t12\t0.5\r\n7\t") + label +
                                 QStringLiteral("\t13\t0.25\nx\ty\t14\t1e-3");
            const QByteArray file =
                QStringEncoder(encoding, QStringConverter::Flag::WriteBom).encode(text);
            const Result<GenomeScan> expected = plainScan(file);
            QVERIFY(std::holds_alternative<GenomeScan>(expected));
            for (const qsizetype blockSize :
                 {defaultBlockSize, qsizetype(99), qsizetype(16384), qsizetype(16385)})
                QVERIFY(agree(scan(file, blockSize), expected, file.right(160), blockSize));
        }
    }
}

QTEST_GUILESS_MAIN(RandomFiles)
#include "tst_random_files.moc"

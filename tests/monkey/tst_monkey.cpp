#include "driven_run.h"
#include "support/random.h"
#include "support/random_association_file.h"

#include <QDir>
#include <QTest>

// Runs the monkey, each time with another seed and other files: real ones, odd ones and random
// ones. Whatever it does, the program ends in one of its two ways, with a complete log and nothing
// on standard error but what is known. PELMARK_MONKEY_RUNS and PELMARK_MONKEY_FIRST tell how many
// runs and from which seed on.
class MonkeyRuns : public QObject {
    Q_OBJECT

private slots:
    void run_data();
    void run();
};

namespace {

constexpr int stepsPerRun = 40;

void addFiles(const DrivenRun& monkey, Random& random) {
    const QString examples = QStringLiteral(PELMARK_EXAMPLES "/");
    const QString data = QStringLiteral(PELMARK_TEST_DATA "/");
    QVERIFY(QDir(monkey.path("")).mkdir(QStringLiteral("folder.txt")));
    monkey.addCopy("real.txt", examples + random.oneOf({"small.txt", "chromosome1.txt"}));
    monkey.addCopy("odd.txt",
                   data + random.oneOf({"blocks_unsorted.txt", "double_blanks.txt", "nan_p.txt",
                                        "comma.csv", "sorted_by_p_crlf.txt"}));
    monkey.addFile("random.txt", randomAssociationFile(random).bytes);
    monkey.addFile("equal.csv", "1,7,0.5\n1,7,0.5\n2,7,0.5\n2,7,0.5\n");
    monkey.addFile("extreme.txt",
                   "id pos p\na -2147483648 1e-300\na 2147483647 5e-324\na 0 inf\nb 1 nan\n"
                   "b 2 -1\nb 2147483647 1e300\nb -2147483648 1\n");
}

// A fault of the file has its own line; the table's fault has no line end.
bool isCompleteAfterFault(const QByteArray& log) {
    const QByteArray lastLine = log.trimmed().split('\n').last();
    return log.startsWith(logHeader) && lastLine.endsWith('!') &&
           log.endsWith(lastLine == "Could not generate outpout file!" ? "!" : "!\n");
}

} // namespace

void MonkeyRuns::run_data() {
    QTest::addColumn<int>("seed");
    const int first = qEnvironmentVariableIntValue("PELMARK_MONKEY_FIRST");
    const int runs = std::max(qEnvironmentVariableIntValue("PELMARK_MONKEY_RUNS"), 1);
    for (int seed = first; seed < first + runs; ++seed)
        QTest::addRow("seed %d", seed) << seed;
}

void MonkeyRuns::run() {
    QFETCH(int, seed);
    Random random(static_cast<std::uint64_t>(seed));
    DrivenRun monkey(QStringLiteral(PELMARK_MONKEY));
    addFiles(monkey, random);
    monkey.setEnvironment("PELMARK_MONKEY_SEED", QString::number(seed));
    monkey.setEnvironment("PELMARK_MONKEY_STEPS", QString::number(stepsPerRun));
    monkey.start();
    const QByteArray steps = monkey.standardOutput();
    QVERIFY2(monkey.complaints().isEmpty(),
             monkey.complaints().join('\n').toUtf8() + "after\n" + steps);
    QVERIFY2(monkey.exitStatus() == 0 || monkey.exitStatus() == 1, steps);
    QVERIFY2(monkey.exitStatus() == 0 || isCompleteAfterFault(monkey.log()),
             monkey.log() + "after\n" + steps);
}

QTEST_GUILESS_MAIN(MonkeyRuns)
#include "tst_monkey.moc"

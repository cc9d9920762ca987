#include "support/random.h"
#include "support/random_association_file.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
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
constexpr int limitInMilliseconds = 300'000;

void write(const QString& path, const QByteArray& content) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

void addFiles(const QString& folder, Random& random) {
    const QString examples = QStringLiteral(PELMARK_EXAMPLES "/");
    const QString data = QStringLiteral(PELMARK_TEST_DATA "/");
    QVERIFY(QDir(folder).mkdir(QStringLiteral("folder.txt")));
    QVERIFY(QFile::copy(examples + random.oneOf({"small.txt", "chromosome1.txt"}),
                        folder + "/real.txt"));
    QVERIFY(QFile::copy(data + random.oneOf({"blocks_unsorted.txt", "double_blanks.txt",
                                             "nan_p.txt", "comma.csv", "sorted_by_p_crlf.txt"}),
                        folder + "/odd.txt"));
    write(folder + "/random.txt", randomAssociationFile(random).bytes);
    write(folder + "/equal.csv", "1,7,0.5\n1,7,0.5\n2,7,0.5\n2,7,0.5\n");
    write(folder + "/extreme.txt",
          "id pos p\na -2147483648 1e-300\na 2147483647 5e-324\na 0 inf\nb 1 nan\n"
          "b 2 -1\nb 2147483647 1e300\nb -2147483648 1\n");
}

QProcessEnvironment environment(const QString& home, int seed) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("QT_FONT_DPI", "96");
    environment.insert("HOME", home);
    environment.insert("XDG_CONFIG_HOME", home + "/config");
    environment.insert("XDG_RUNTIME_DIR", home);
    environment.insert("PELMARK_MONKEY_SEED", QString::number(seed));
    environment.insert("PELMARK_MONKEY_STEPS", QString::number(stepsPerRun));
    return environment;
}

QByteArray complaints(const QByteArray& standardError) {
    QByteArray lines;
    for (const QByteArray& line : standardError.split('\n'))
        if (!line.isEmpty() && !line.contains("No such slot MyWidget::reSize()") &&
            line != "This plugin does not support propagateSizeHints()")
            lines += line + '\n';
    return lines;
}

// A fault of the file has its own line; the table's fault has no line end.
bool isCompleteAfterFault(const QByteArray& log) {
    const QByteArray lastLine = log.trimmed().split('\n').last();
    return log.startsWith("Pelmark 0.1 by the Pelmark authors\n\n") && lastLine.endsWith('!') &&
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
    QTemporaryDir folder, home;
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("start")));
    const QString work = folder.filePath(QStringLiteral("start"));
    addFiles(work, random);
    QProcess process;
    process.setProcessEnvironment(environment(home.path(), seed));
    process.setWorkingDirectory(work);
    process.start(QStringLiteral(PELMARK_MONKEY), QStringList());
    QVERIFY(process.waitForFinished(limitInMilliseconds));
    const QByteArray steps = process.readAllStandardOutput();
    const QByteArray complained = complaints(process.readAllStandardError());
    QVERIFY2(complained.isEmpty(), complained + "after\n" + steps);
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() <= 1, steps);
    QFile log(work + "/Pelmark_log.txt");
    QVERIFY(log.open(QIODevice::ReadOnly));
    const QByteArray text = log.readAll();
    QVERIFY2(process.exitCode() == 0 || isCompleteAfterFault(text), text + "after\n" + steps);
}

QTEST_GUILESS_MAIN(MonkeyRuns)
#include "tst_monkey.moc"

#include "chromosome_load.h"
#include "genome_scan.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <cmath>

namespace {

QString sourcePath(const QString& name) {
    return QStringLiteral(PELMARK_SOURCE "/") + name;
}

QString textOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

QString guide() {
    return textOf(sourcePath(QStringLiteral("docs/guide.md")));
}

// Everything in a text that a pattern's first group finds, sorted, each once.
QStringList found(const QString& text, const QString& pattern) {
    QStringList results;
    const QRegularExpression expression(pattern, QRegularExpression::MultilineOption);
    for (QRegularExpressionMatchIterator it = expression.globalMatch(text); it.hasNext();)
        results.append(it.next().captured(1));
    results.sort();
    results.removeDuplicates();
    return results;
}

// The commands that make a file open: the lines in the guide's blocks of shell code.
QStringList commands() {
    return found(guide(), QStringLiteral("^```sh\\n(.*)\\n```$"));
}

QStringList toolFiles() {
    return QDir(QStringLiteral(PELMARK_GUIDE_DATA "/tool_outputs"))
        .entryList(QDir::Files, QDir::Name);
}

QString inputOf(const QString& command) {
    for (const QString& name : toolFiles())
        if (command.contains(name))
            return name;
    return {};
}

QString outputOf(const QString& command) {
    return command.section(u' ', -1);
}

// The files in the table of those that open as they are.
QStringList filesThatOpen() {
    const QString table = guide()
                              .section(QStringLiteral("These open as they are"), 1)
                              .section(QStringLiteral("\n\n"), 1, 1);
    return found(table, QStringLiteral("^\\|[^|]*\\| `([^`]*)` \\|"));
}

std::optional<FaultCode> faultOf(const QString& path) {
    QFile file(path);
    const Result<GenomeScan> scan = scanGenome(file);
    const Fault* fault = std::get_if<Fault>(&scan);
    return fault ? std::optional(fault->code) : std::nullopt;
}

// What was read; nothing where the file is at fault.
template <typename T>
T valueOf(const Result<T>& result) {
    return std::holds_alternative<T>(result) ? std::get<T>(result) : T();
}

GenomeScan scanOf(const QString& path) {
    QFile file(path);
    return valueOf(scanGenome(file));
}

Points pointsOf(const QString& path, const QString& chromosome) {
    QFile file(path);
    return valueOf(loadChromosome(file, chromosome));
}

// The markers that are in every one of the tools' files, as lines of chromosome, position and p
// with three digits.
QStringList expectedMarkers() {
    QStringList lines =
        textOf(QStringLiteral(PELMARK_GUIDE_DATA "/markers.txt")).split(u'\n', Qt::SkipEmptyParts);
    for (QString& line : lines) {
        const QStringList fields = line.split(u'\t');
        line = QStringLiteral("%1 %2 %3")
                   .arg(fields[0], fields[1])
                   .arg(fields[2].toDouble(), 0, 'g', 3);
    }
    return lines;
}

QStringList markersOf(const QString& path) {
    QStringList lines;
    for (const Chromosome& chromosome : scanOf(path).chromosomes) {
        const Points points = pointsOf(path, chromosome.label);
        for (qsizetype i = 0; i < points.positions.size(); ++i)
            lines.append(QStringLiteral("%1 %2 %3")
                             .arg(chromosome.label)
                             .arg(points.positions[i])
                             .arg(std::pow(10.0, -points.values[i]), 0, 'g', 3));
    }
    return lines;
}

std::optional<FaultCode> faultOfText(const QByteArray& text) {
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("scan.txt")));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write a file");
    file.close();
    return faultOf(file.fileName());
}

} // namespace

class GuideTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void everyToolIsCovered();
    void opensAsItIs_data();
    void opensAsItIs();
    void opensAfterItsCommand_data();
    void opensAfterItsCommand();
    void manualPageHasTheGuidesCommand();
    void trapsAreTrue();
    void messagesAreExplained();
    void picturesAreThere();
    void linksLeadSomewhere();

private:
    QString inFolder(const QString& name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder; // with a copy of all tools' files
};

void GuideTest::init() {
    m_folder = std::make_unique<QTemporaryDir>();
    for (const QString& name : toolFiles())
        QVERIFY(QFile::copy(QStringLiteral(PELMARK_GUIDE_DATA "/tool_outputs/") + name,
                            inFolder(name)));
}

void GuideTest::everyToolIsCovered() {
    QStringList covered = filesThatOpen();
    for (const QString& command : commands())
        covered.append(inputOf(command));
    covered.sort();
    covered.removeDuplicates();
    QCOMPARE(covered, toolFiles());
}

void GuideTest::opensAsItIs_data() {
    QTest::addColumn<QString>("name");
    for (const QString& name : filesThatOpen())
        QTest::addRow("%s", qPrintable(name)) << name;
}

// Also where lines are in no order, as METAL's: then only what is in the file can be compared.
void GuideTest::opensAsItIs() {
    QFETCH(QString, name);
    QVERIFY(!faultOf(inFolder(name)));
    const bool isSorted = commands().filter(name).isEmpty();
    if (isSorted)
        QCOMPARE(markersOf(inFolder(name)), expectedMarkers());
    else
        QCOMPARE(scanOf(inFolder(name)).points.values.size(), expectedMarkers().size());
}

void GuideTest::opensAfterItsCommand_data() {
    QTest::addColumn<QString>("command");
    for (const QString& command : commands())
        QTest::addRow("%s", qPrintable(inputOf(command))) << command;
}

void GuideTest::opensAfterItsCommand() {
    QFETCH(QString, command);
    const QString input = inFolder(inputOf(command));
    QCOMPARE(!faultOf(input), filesThatOpen().contains(inputOf(command)));
    QProcess shell;
    shell.setWorkingDirectory(m_folder->path());
    shell.start(QStringLiteral("sh"), {QStringLiteral("-c"), command});
    QVERIFY(shell.waitForFinished());
    QCOMPARE(shell.readAllStandardError(), QByteArray());
    QCOMPARE(shell.exitCode(), 0);
    QVERIFY(outputOf(command).endsWith(QLatin1String(".txt")));
    QCOMPARE(markersOf(inFolder(outputOf(command))), expectedMarkers());
}

void GuideTest::manualPageHasTheGuidesCommand() {
    const QString page = textOf(sourcePath(QStringLiteral("share/pelmark.1.in")));
    QString command = found(page, QStringLiteral("^(awk .*)$")).value(0);
    command.replace(QLatin1String("\\(aq"), QLatin1String("'"))
        .replace(QLatin1String("\\(dq"), QLatin1String("\""));
    QVERIFY2(commands().contains(command), qPrintable(command));
}

void GuideTest::trapsAreTrue() {
    QVERIFY(!faultOfText("chr pos p\n1 1 0.5\n1 2 1e-320\n"));
    QCOMPARE(faultOfText("chr pos p\n1 1 0.5\n1 2 1e-400\n"), FaultCode::NonNumericPValue);
    QCOMPARE(faultOfText("chr pos p\n1 1 0.5\n1 2 0\n"), FaultCode::TooFewGenomePoints);
    QCOMPARE(faultOfText("chr1 1 0.5\nchr1 2 0.5\n"), FaultCode::IncorrectColumns);
    QCOMPARE(faultOfText("chr,pos,p value\n1,1,0.5\n"), FaultCode::TooFewColumns);
    QCOMPARE(faultOfText("# made by hand\nchr,pos,p\n"), FaultCode::IncorrectColumns);
}

// What is in the code is what the guide has to explain.
void GuideTest::messagesAreExplained() {
    QStringList messages =
        found(textOf(sourcePath(QStringLiteral("src/window/fault_sentences.cpp"))),
              QStringLiteral("\"([^\"]+!)\""));
    QCOMPARE(messages.size(), 8);
    QString window = textOf(sourcePath(QStringLiteral("src/window/main.cpp")));
    window += textOf(sourcePath(QStringLiteral("src/window/log.cpp")));
    messages += found(window, QStringLiteral("writeLog\\(\"([^\"\\\\]+)"));
    messages += found(window, QStringLiteral("endProcess\\(QStringLiteral\\(\"([^\"\\\\]+)"));
    QVERIFY(messages.size() > 12);
    const QString log = guide().section(QStringLiteral("## What the log says"), 1);
    for (const QString& message : std::as_const(messages))
        QVERIFY2(log.contains(QStringLiteral("| `") + message.trimmed()), qPrintable(message));
}

void GuideTest::picturesAreThere() {
    const QStringList shown = found(guide(), QStringLiteral("\\(pictures/([^)]*)\\)"));
    QStringList taken = QDir(sourcePath(QStringLiteral("docs/pictures"))).entryList(QDir::Files);
    taken.removeAll(QStringLiteral("readme.png"));
    QCOMPARE(shown, taken);
}

void GuideTest::linksLeadSomewhere() {
    QStringList anchors;
    for (QString title : found(guide(), QStringLiteral("^##* (.*)$")))
        anchors.append(title.toLower().remove(u',').replace(u' ', u'-'));
    for (const QString& target : found(guide(), QStringLiteral("\\(#([^)]*)\\)")))
        QVERIFY2(anchors.contains(target), qPrintable(target));
}

QTEST_GUILESS_MAIN(GuideTest)
#include "tst_guide.moc"

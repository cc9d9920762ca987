#include "format_cases.h"
#include "tools_run.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>
#include <cmath>

namespace {

double negLog10(const QString& text) {
    static const QRegularExpression p("^p=([0-9.]+)(?:[eE](.*))?$");
    const QRegularExpressionMatch match = p.match(text);
    return match.hasMatch() ? -std::log10(match.captured(1).toDouble()) - match.captured(2).toInt()
                            : text.toDouble();
}

bool isNear(double a, double b) {
    return std::abs(a - b) <= 1e-5 * std::max(1.0, std::abs(b));
}

// A row as it came out, and as it should have.
bool isSame(const QStringList& row, const QStringList& expected) {
    if (row.size() < 4 || expected.size() < 3)
        return row == expected;
    const double log = negLog10(expected[2]), p = row[2].toDouble();
    return row[0] == expected[0] && row[1] == expected[1] && isNear(row[3].toDouble(), log) &&
           (log > 307 || isNear(std::abs(std::log10(p)), log));
}

QList<QByteArray> linesOf(const QByteArray& text) {
    return text.isEmpty() ? QList<QByteArray>() : text.chopped(1).split('\n');
}

// What `prepare FILE --lines --dropped` made of each line.
QMap<qint64, QStringList> rowsOf(const QByteArray& table, const QByteArray& dropped) {
    QMap<qint64, QStringList> rows;
    for (const QByteArray& line : linesOf(table).mid(1)) {
        const QStringList fields = QString::fromLatin1(line).split(u'\t');
        rows.insert(fields.last().toLongLong(), fields.first(4));
    }
    for (const QByteArray& line : linesOf(dropped)) {
        const QStringList fields = QString::fromLatin1(line).split(u'\t');
        rows.insert(fields[1].toLongLong(), {fields[0]});
    }
    return rows;
}

} // namespace

// Tables as some hundred tools and archives write them.
class Formats : public QObject {
    Q_OBJECT

private slots:
    void arePrepared_data() { addCases(); }
    void arePrepared();
    void areCopiedOncePrepared_data() { addCases(); }
    void areCopiedOncePrepared();
    void areChecked_data() { addCases(); }
    void areChecked();

private:
    static void addCases();
    static void decides(const ToolsRun& run, const QByteArray& command);
};

void Formats::addCases() {
    QTest::addColumn<QString>("text");
    for (const QString& text : formatCases(QStringLiteral(PELMARK_TEST_DATA "/formats")))
        QTest::newRow(qPrintable(text.section(u'\n', 0, 0))) << text;
}

// A command that has nothing to fill in is run as a shell would run it.
void Formats::decides(const ToolsRun& run, const QByteArray& command) {
    static const QRegularExpression blank(" (COLUMN|FILE|NAME|N)\\b");
    const QByteArray name = "pelmark-tools ";
    QVERIFY2(command.startsWith(name), command);
    if (QString::fromUtf8(command).contains(blank))
        return;
    QProcess shell;
    shell.setWorkingDirectory(run.path("."));
    shell.start("sh", {"-c", '\'' + ToolsRun::program() + "' " +
                                 QString::fromUtf8(command.mid(name.size()))});
    QVERIFY(shell.waitForFinished());
    QVERIFY2(shell.exitCode() == 0, command + '\n' + shell.readAllStandardError());
}

void Formats::arePrepared() {
    QFETCH(QString, text);
    const FormatCase each(text);
    const ToolsRun run;
    run.write("in.txt", each.file);
    const ToolsRun::Result result = run.run(
        QStringList{"prepare", "in.txt", "-o", "out.txt", "--lines", "--dropped", "dropped.txt"} +
        each.arguments);
    QVERIFY2(result.status == each.status, result.error);
    for (const QString& message : each.messages)
        QVERIFY2(result.error.contains(message.toUtf8()), result.error);
    if (each.status != 0) {
        QVERIFY(result.error.startsWith("pelmark-tools: in.txt:"));
        for (const QByteArray& line : result.error.split('\n'))
            if (line.startsWith("    pelmark-tools "))
                decides(run, line.trimmed());
        return;
    }
    const auto rows = rowsOf(run.read("out.txt"), run.read("dropped.txt"));
    QCOMPARE(rows.keys(), each.rows.keys());
    for (auto row = rows.begin(); row != rows.end(); ++row)
        QVERIFY2(isSame(row.value(), each.rows[row.key()]),
                 qPrintable(QStringLiteral("line %1: %2").arg(row.key()).arg(row->join(u' '))));
}

void Formats::areCopiedOncePrepared() {
    QFETCH(QString, text);
    const FormatCase each(text);
    const ToolsRun run;
    run.write("in.txt", each.file);
    for (const QStringList& options : {QStringList{}, {"--all-columns", "--lines"}}) {
        const ToolsRun::Result once =
            run.run(QStringList{"prepare", "in.txt", "-q"} + options + each.arguments);
        if (once.status != 0)
            return;
        run.write("out.txt", once.out);
        const ToolsRun::Result twice = run.run({"prepare", "out.txt", "-q"});
        QCOMPARE(twice.out, once.out);
    }
}

void Formats::areChecked() {
    QFETCH(QString, text);
    const FormatCase each(text);
    const ToolsRun run;
    run.write("in.txt", each.file);
    const ToolsRun::Result result = run.run({"check", "in.txt", "--json", "-"});
    const QJsonObject report =
        QJsonDocument::fromJson(result.out).object()["files"].toArray()[0].toObject();
    QVERIFY(result.status == (report["verdict"] == "opens" ? 0 : 1));
    QStringList said{report["verdict"].toString()};
    for (const auto& finding : report["findings"].toArray())
        said << finding.toObject()["code"].toString();
    for (qsizetype i = 0; i < each.check.size(); ++i)
        QVERIFY2(i == 0 ? said[0] == each.check[0] : said.contains(each.check[i]),
                 qPrintable(said.join(u' ')));
    // That the shortest command succeeds, arePrepared tells of most.
    for (const auto& command : report["commands"].toArray())
        if (command != "pelmark-tools prepare in.txt -o in.prepared.txt" || each.status != 0 ||
            !each.arguments.isEmpty())
            decides(run, command.toString().toUtf8());
}

QTEST_GUILESS_MAIN(Formats)
#include "tst_formats.moc"

#include "pages.h"
#include "tools_run.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>
#include <memory>

using namespace pages;

namespace {

QString page() {
    return textOf(sourcePath(QStringLiteral("docs/tools.md")));
}

QStringList sorted(QStringList texts) {
    texts.sort();
    return texts;
}

// The keys of an object and of all objects in it.
QStringList keysOf(const QJsonValue& value) {
    QStringList keys;
    for (const QJsonValue& element : value.toArray())
        keys += keysOf(element);
    const QJsonObject object = value.toObject();
    for (auto it = object.begin(); it != object.end(); ++it)
        keys += QStringList(it.key()) + keysOf(it.value());
    keys.removeDuplicates();
    return keys;
}

} // namespace

// The page about pelmark-tools says what the program does.
class ToolsPage : public QObject {
    Q_OBJECT

private slots:
    void init();
    void optionsAreListed_data();
    void optionsAreListed();
    void namesAreListed_data();
    void namesAreListed();
    void keysAreListed();
    void examplesAreTrue_data();
    void examplesAreTrue();

private:
    QJsonObject report(const QStringList& words) const {
        return QJsonDocument::fromJson(m_run->run(words).out).object();
    }

    std::unique_ptr<ToolsRun> m_run; // in a folder with a copy of all tools' files
};

void ToolsPage::init() {
    m_run = std::make_unique<ToolsRun>();
    const QDir folder(QStringLiteral(PELMARK_GUIDE_DATA "/tool_outputs"));
    for (const QString& name : folder.entryList(QDir::Files))
        QVERIFY(QFile::copy(folder.filePath(name), m_run->path(name)));
    const QString table = QStringLiteral("peak.txt"); // as the window saves it
    QVERIFY(QFile::copy(QStringLiteral(PELMARK_GUIDE_DATA "/") + table, m_run->path(table)));
}

void ToolsPage::optionsAreListed_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("heading");
    for (const char* name : {"check", "prepare", "plot", "hits"})
        QTest::newRow(name) << name << QStringLiteral("## ") + QLatin1String(name);
    for (const char* name : {"keep", "drop"})
        QTest::newRow(name) << name << QStringLiteral("## keep and drop");
}

// Each with what stands for its value, and the values it can have.
void ToolsPage::optionsAreListed() {
    QFETCH(QString, command);
    QFETCH(QString, heading);
    const QString help = QString::fromUtf8(m_run->run({command, QStringLiteral("--help")}).out);
    QString text = part(page(), heading);
    text.remove(u'\\');
    QCOMPARE(found(text, QStringLiteral("^\\| (?:`-\\w`, )?`(--[^`]*)` \\|")),
             found(help, QStringLiteral("^  (?:-\\w,)?(--[a-z0-9-]+(?: [A-Z=|]+)?)")));
    const QRegularExpression choices(QStringLiteral("(--[a-z-]+) [A-Z]+:\\{([^}]*)\\}"));
    for (auto it = choices.globalMatch(help); it.hasNext();) {
        const QRegularExpressionMatch option = it.next();
        const QString row =
            found(text, QStringLiteral("^(\\| `%1 .*)$").arg(option.captured(1))).value(0);
        for (const QString& choice : option.captured(2).split(u','))
            QVERIFY2(row.contains(u'`' + choice + u'`'), qPrintable(option.captured()));
    }
}

void ToolsPage::namesAreListed_data() {
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("heading");
    QTest::addColumn<QString>("cell");
    const auto row = [](const char* title, const char* source, const char* name,
                        const char* heading, const char* cell) {
        QTest::newRow(title) << source << name << heading << cell;
    };
    row("drop reasons", "src/formats/prepare_report.cpp", "^ +\"([a-z-]+)\",$", "### Dropped rows",
        "^\\| (`[^|]*) \\|");
    row("verdicts", "src/tools/finding_words.cpp",
        "Verdict::\\w+:\\s*return QLatin1String\\(\"([a-z-]+)\"\\)", "## check",
        "^\\| [^|`]* \\| (`[^|]*) \\|");
    row("exit statuses", "src/tools/exit_status.h", "Status\\w+ = (\\d+)", "### Exit status",
        "^\\| (\\d+) \\|");
    row("changes", "src/tools/prepare_words.cpp", "\\{\"([a-z_]+)\", report\\.\\w+,",
        "## JSON, version 1", "rows by kind of change: ([^;]*);");
}

// What the sources name is in the page's cells, and nothing else.
void ToolsPage::namesAreListed() {
    QFETCH(QString, source);
    QFETCH(QString, name);
    QFETCH(QString, heading);
    QFETCH(QString, cell);
    const QStringList names = found(textOf(sourcePath(source)), name);
    QVERIFY(names.size() > 3);
    const QString cells = found(part(page(), heading), cell).join(u' ');
    QCOMPARE(sorted(found(cells, QStringLiteral("([a-z0-9_-]+)"))), sorted(names));
}

// Every key of a report is on the page; drop reasons are compared elsewhere.
void ToolsPage::keysAreListed() {
    m_run->write(QStringLiteral("bad.txt"), "chr\tpos\tp\n1\t5\t0.1\n1\tx\t0.2\n");
    const QString json = QStringLiteral("--json");
    QJsonObject prepared = report({"prepare", "trait.regenie", "-q", "-o", "out.txt", json, "-"});
    QCOMPARE(prepared["written"], 8);
    prepared["dropped"] = prepared["dropped"].toObject()["p-missing"];
    const QJsonObject checked = report({"check", "bad.txt", "trait.regenie", json, "-"});
    QCOMPARE(checked["files"].toArray().size(), 2);
    m_run->write(QStringLiteral("one.txt"), "chr\tpos\tp\n1\t5\t1e-9\n");
    const QJsonObject hits = report({"hits", "one.txt", "-q", "-o", "hits.tsv", json, "-"});
    QCOMPARE(hits["leads"].toArray().size(), 1);
    QJsonObject dropped =
        report({"drop", "trait.regenie", "peak.txt", "-q", "-o", "out.txt", json, "-"});
    QCOMPARE(dropped["written"], 7);
    dropped["without_marker"] = dropped["without_marker"].toObject()["p-missing"];
    const QString text = part(page(), QStringLiteral("## JSON, version 1"));
    for (const QJsonObject& object : {prepared, checked, hits, dropped}) {
        QCOMPARE(object["version"], 1);
        for (const QString& key : keysOf(object))
            QVERIFY2(text.contains(u'`' + key + u'`'), qPrintable(key));
    }
}

void ToolsPage::examplesAreTrue_data() {
    QTest::addColumn<QString>("example");
    for (const QString& example : examples(page()))
        QTest::addRow("%s", qPrintable(example.section(u'\n', 0, 0))) << example;
}

void ToolsPage::examplesAreTrue() {
    QFETCH(QString, example);
    QCOMPARE(played(example, m_run->path(QStringLiteral("."))), example);
}

QTEST_GUILESS_MAIN(ToolsPage)
#include "tst_tools_page.moc"

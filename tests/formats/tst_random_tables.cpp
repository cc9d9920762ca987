#include "plain_prepare.h"
#include "plain_refusal.h"
#include "prepare.h"
#include "support/random.h"
#include "support/random_table.h"

#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>
#include <algorithm>
#include <cmath>

// Random tables, prepared quickly and plainly: the same bytes, the same rows dropped for the same
// reasons, or refused for the same one.
class RandomTables : public QObject {
    Q_OBJECT

private slots:
    void arePreparedAlike();
};

namespace {

QStringList saved(const QTemporaryDir& folder, const QList<QByteArray>& files) {
    QStringList paths;
    for (qsizetype i = 0; i < files.size(); ++i) {
        QFile file(folder.filePath(QString::number(i)));
        if (!file.open(QIODevice::WriteOnly) || file.write(files[i]) != files[i].size())
            qFatal("cannot write a file");
        paths << file.fileName();
    }
    return paths;
}

// With the table of positions as a file.
PrepareOptions optionsOf(const RandomTable& table, const QTemporaryDir& folder) {
    PrepareOptions options = table.options;
    if (table.positions.isEmpty())
        return options;
    QFile file(folder.filePath("positions"));
    if (!file.open(QIODevice::WriteOnly) || file.write(table.positions) != table.positions.size())
        qFatal("cannot write a file");
    options.positionsFile = file.fileName();
    return options;
}

plain::Prepared preparedQuickly(const RandomTable& table, const QTemporaryDir& folder) {
    QTemporaryFile output(folder.filePath("out"));
    if (!output.open())
        qFatal("cannot open a file");
    const auto result = prepare(
        {saved(folder, table.files), optionsOf(table, folder), nullptr, [](qint64) {}}, output);
    plain::Prepared prepared;
    if (const auto* refusal = std::get_if<Refusal>(&result)) {
        prepared.refused = refusal->code;
        return prepared;
    }
    for (int i = 0; i < dropReasonCount; ++i)
        if (const qint64 count =
                std::get<PrepareReport>(result).dropped[static_cast<size_t>(i)].count)
            prepared.dropped[nameOf(static_cast<DropReason>(i))] = count;
    output.seek(0);
    prepared.table = output.readAll();
    return prepared;
}

QByteArray told(const plain::Prepared& prepared) {
    if (prepared.refused)
        return "refused: " + QByteArray::number(static_cast<int>(*prepared.refused)) + '\n';
    QByteArray text = prepared.table;
    for (auto each = prepared.dropped.begin(); each != prepared.dropped.end(); ++each)
        text += each.key().toUtf8() + ": " + QByteArray::number(each.value()) + '\n';
    return text;
}

// The options that name columns or values, to understand a difference by.
QByteArray told(const PrepareOptions& options) {
    QByteArray text = "p scale " + QByteArray::number(int(options.pScale.value_or(PScale::P))) +
                      ", p source " + QByteArray::number(int(options.pSource));
    for (const auto& [name, value] :
         {std::pair("chromosome", &options.chromosome), std::pair("position", &options.position),
          std::pair("p", &options.p), std::pair("name", &options.name),
          std::pair("chromosome value", &options.chromosomeValue),
          std::pair("sample", &options.sample), std::pair("test name", &options.testName)})
        if (*value)
            text += QByteArray(", ") + name + ' ' + **value;
    for (const auto& [title, value] : options.where)
        text += ", where " + title + '=' + value;
    return text + (options.noHeader ? ", no header" : "");
}

// p computed from effects, which mostly has many digits, may differ in the last of them.
bool isNearlySame(const QByteArray& a, const QByteArray& b) {
    constexpr qsizetype digits = 13;
    const double p = a.toDouble(), other = b.toDouble();
    return a == b || (p < 1e-307 && other < 1e-307) ||
           (std::max(a.size(), b.size()) > digits && std::abs(p - other) <= 1e-12 * p);
}

bool isSameTable(const QByteArray& a, const QByteArray& b, PSource source) {
    if (source == PSource::Column)
        return a == b;
    const QList<QByteArray> lines = a.split('\n'), others = b.split('\n');
    for (qsizetype i = 0; i < lines.size() && lines.size() == others.size(); ++i) {
        QList<QByteArray> fields = lines[i].split('\t'), other = others[i].split('\t');
        if (fields.size() > 2 && other.size() > 2 && isNearlySame(fields[2], other[2]))
            fields[2] = other[2];
        if (fields != other)
            return false;
    }
    return lines.size() == others.size();
}

bool isSame(const plain::Prepared& a, const plain::Prepared& b, PSource source) {
    if (a.refused && b.refused)
        return plain::isSameRefusal(*a.refused, *b.refused);
    if (a.refused || b.refused)
        return false;
    return isSameTable(a.table, b.table, source) && a.dropped == b.dropped;
}

} // namespace

void RandomTables::arePreparedAlike() {
    const QTemporaryDir folder;
    Random random(runSeed());
    int written = 0;
    for (int i = randomCases(1000); i > 0; --i) {
        const RandomTable table = randomTable(random);
        const plain::Prepared quick = preparedQuickly(table, folder);
        const plain::Prepared expected = plain::prepare(table.files, optionsOf(table, folder));
        written += quick.refused ? 0 : 1;
        if (isSame(quick, expected, table.options.pSource))
            continue;
        for (const QByteArray& file : table.files)
            qWarning("%s", file.toBase64().constData());
        qWarning("%s", told(table.options).constData());
        qWarning("prepared quickly:\n%s\nplainly:\n%s", told(quick).constData(),
                 told(expected).constData());
        QFAIL("a table is prepared in two ways");
    }
    QVERIFY(written > 0);
}

QTEST_GUILESS_MAIN(RandomTables)
#include "tst_random_tables.moc"

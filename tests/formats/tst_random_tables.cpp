#include "plain_prepare.h"
#include "prepare.h"
#include "support/random.h"
#include "support/random_table.h"

#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>

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

plain::Prepared preparedQuickly(const RandomTable& table, const QTemporaryDir& folder) {
    QTemporaryFile output(folder.filePath("out"));
    if (!output.open())
        qFatal("cannot open a file");
    const auto result =
        prepare({saved(folder, table.files), table.options, nullptr, [](qint64) {}}, output);
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

bool isSame(const plain::Prepared& a, const plain::Prepared& b) {
    if (a.refused || b.refused)
        return a.refused == b.refused;
    return a.table == b.table && a.dropped == b.dropped;
}

} // namespace

void RandomTables::arePreparedAlike() {
    const QTemporaryDir folder;
    Random random(runSeed());
    int written = 0;
    for (int i = randomCases(2000); i > 0; --i) {
        const RandomTable table = randomTable(random);
        const plain::Prepared quick = preparedQuickly(table, folder);
        const plain::Prepared expected = plain::prepare(table.files, table.options);
        written += quick.refused ? 0 : 1;
        if (isSame(quick, expected))
            continue;
        for (const QByteArray& file : table.files)
            qWarning("%s", file.toBase64().constData());
        qWarning("prepared quickly:\n%s\nplainly:\n%s", told(quick).constData(),
                 told(expected).constData());
        QFAIL("a table is prepared in two ways");
    }
    QVERIFY(written > 0);
}

QTEST_GUILESS_MAIN(RandomTables)
#include "tst_random_tables.moc"

#include "support/random.h"
#include "table_rows.h"
#include "titles.h"

#include <QBuffer>
#include <QTest>
#include <algorithm>

// Going to a line gives what reading all lines up to it gives.
class TableRowsTest : public QObject {
    Q_OBJECT

private slots:
    void goesToLines();
    void knowsTheEnd_data();
    void knowsTheEnd();
};

namespace {

QByteArray described(const TableRows& rows) {
    QByteArrayList parts{QByteArray::number(rows.line()), bytesOf(rows.text())};
    for (size_t i = 0; i < rows.fieldCount(); ++i)
        parts += bytesOf(rows.field(i));
    return parts.join('|');
}

QByteArray randomLine(Random& random) {
    QByteArray line;
    for (int fields = random.below(6); fields > 0; --fields) {
        line += QByteArray(random.oneIn(20) ? random.below(3'000) : random.below(12),
                           random.oneOf({'a', 'b', ' '}));
        line += random.oneOf({",", ",", "\"x,y\",", "\t", " "});
    }
    return line;
}

// Some of them a few times longer than what is read at once.
QByteArray randomText(Random& random) {
    QByteArrayList lines;
    for (int count = random.oneIn(10) ? random.below(20'000) : random.below(60); count > 0; --count)
        lines += randomLine(random);
    return lines.join(random.oneOf({"\n", "\r\n"})) + (random.oneIn(2) ? "\n" : "");
}

TableFormat randomFormat(Random& random) {
    TableFormat format;
    format.separator = random.oneOf({Separator::Comma, Separator::Tab, Separator::Spaces});
    format.quoted = random.oneIn(2);
    return format;
}

QByteArrayList allRows(QByteArray text, const TableFormat& format) {
    QBuffer buffer(&text);
    buffer.open(QIODevice::ReadOnly);
    TableRows rows(buffer, format);
    QByteArrayList all;
    while (rows.next())
        all += described(rows);
    return all;
}

} // namespace

// Here and there by single steps, too.
void TableRowsTest::goesToLines() {
    Random random(runSeed());
    for (int i = 0; i < randomCases(300); ++i) {
        QByteArray text = randomText(random);
        const TableFormat format = randomFormat(random);
        const QByteArrayList all = allRows(text, format);
        QBuffer buffer(&text);
        buffer.open(QIODevice::ReadOnly);
        TableRows rows(buffer, format);
        const int stride = random.oneOf({1, 3, 100, 5'000});
        const bool mayStep = random.oneIn(2);
        for (qint64 line = random.between(1, stride); line <= all.size();) {
            QVERIFY(rows.goTo(line));
            QCOMPARE(described(rows), all[line - 1]);
            while (mayStep && random.oneIn(2) && line < all.size()) {
                QVERIFY(rows.next());
                QCOMPARE(described(rows), all[line++]);
            }
            line += random.between(1, stride);
        }
        QVERIFY(!rows.goTo(all.size() + random.between(1, 3)));
        QVERIFY(!rows.failed());
    }
}

void TableRowsTest::knowsTheEnd_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one line") << QByteArray("a");
    QTest::newRow("one ended line") << QByteArray("a\n");
    QTest::newRow("a counted piece") << QByteArray(128, 'a');
    QTest::newRow("a counted piece and its end") << QByteArray(127, 'a') + '\n';
}

void TableRowsTest::knowsTheEnd() {
    QFETCH(QByteArray, text);
    for (const qint64 line : {2, 3, 1'000}) {
        QBuffer buffer(&text);
        buffer.open(QIODevice::ReadOnly);
        TableRows rows(buffer, {});
        QVERIFY(!rows.goTo(line));
    }
}

QTEST_APPLESS_MAIN(TableRowsTest)
#include "tst_table_rows.moc"

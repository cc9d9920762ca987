#include "wait_cursor.h"

#include <QCursor>
#include <QGuiApplication>
#include <QTest>

// The wait cursor is shown for large files only, and only while they are read.
class WaitCursorTest : public QObject {
    Q_OBJECT

private slots:
    void shownForLargeFilesOnly_data();
    void shownForLargeFilesOnly();
};

void WaitCursorTest::shownForLargeFilesOnly_data() {
    constexpr qint64 mebibyte = 1024 * 1024;
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("no file") << qint64{0} << false;
    QTest::newRow("small") << mebibyte << false;
    QTest::newRow("just small") << 8 * mebibyte << false;
    QTest::newRow("just large") << 8 * mebibyte + 1 << true;
    QTest::newRow("huge") << 100'000 * mebibyte << true;
}

void WaitCursorTest::shownForLargeFilesOnly() {
    QFETCH(qint64, bytes);
    QFETCH(bool, isShown);
    {
        const WaitCursor cursor(bytes);
        const QCursor* shown = QGuiApplication::overrideCursor();
        QCOMPARE(shown != nullptr, isShown);
        QVERIFY(!isShown || shown->shape() == Qt::WaitCursor);
    }
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
}

QTEST_MAIN(WaitCursorTest)
#include "tst_wait_cursor.moc"

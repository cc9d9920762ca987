#include "readable_text.h"

#include <QTest>

// Which colour a text gets on a background that is not the theme's.
class ReadableText : public QObject {
    Q_OBJECT

private slots:
    void colors_data();
    void colors();
};

void ReadableText::colors_data() {
    QTest::addColumn<QColor>("themed");
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("expected");
    const auto row = [](const char* name, const QColor& themed, const QColor& background,
                        const QColor& expected) {
        QTest::newRow(name) << themed << background << expected;
    };
    row("a readable colour is kept", QColor(0, 0, 90), Qt::white, QColor(0, 0, 90));
    row("just readable", QColor(118, 118, 118), Qt::white, QColor(118, 118, 118));
    row("just not", QColor(119, 119, 119), Qt::white, Qt::black);
    row("dark on dark", QColor(0, 0, 90), Qt::black, Qt::white);
    row("light on light", QColor(250, 250, 200), QColor(200, 200, 200), Qt::black);
    row("the darkest grey for black", QColor(117, 117, 117), QColor(118, 118, 118), Qt::black);
    row("the lightest grey for white", QColor(117, 117, 117), QColor(117, 117, 117), Qt::white);
}

void ReadableText::colors() {
    QFETCH(QColor, themed);
    QFETCH(QColor, background);
    QTEST(readableText(themed, background), "expected");
}

QTEST_GUILESS_MAIN(ReadableText)
#include "tst_readable_text.moc"

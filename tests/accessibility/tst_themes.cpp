#include "inside.h"

#include "readable_text.h"
#include "window_parts.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <algorithm>
#include <map>

// That every text can be read, in the colours of a theme of scripts/lib/themes. PELMARK_THEME names
// it.
class ThemesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void textIsReadable_data();
    void textIsReadable();
};

const char* const fileName = PELMARK_EXAMPLES "/small.txt";

static QColor colorOf(const QSettings& theme, const char* key) {
    const QStringList parts = theme.value(QLatin1String(key)).toStringList();
    if (parts.size() != 3)
        qFatal("no colour %s", key);
    return QColor(parts[0].toInt(), parts[1].toInt(), parts[2].toInt());
}

static QPalette paletteOf(const QSettings& theme) {
    QPalette palette(colorOf(theme, "Colors:Button/BackgroundNormal"),
                     colorOf(theme, "Colors:Window/BackgroundNormal"));
    palette.setColor(QPalette::WindowText, colorOf(theme, "Colors:Window/ForegroundNormal"));
    palette.setColor(QPalette::ButtonText, colorOf(theme, "Colors:Button/ForegroundNormal"));
    palette.setColor(QPalette::Base, colorOf(theme, "Colors:View/BackgroundNormal"));
    palette.setColor(QPalette::Text, colorOf(theme, "Colors:View/ForegroundNormal"));
    return palette;
}

static QString themeName() {
    return qEnvironmentVariable("PELMARK_THEME");
}

void beforeTheWindow() {
    if (themeName() == u"light")
        return;
    const QSettings theme(QStringLiteral(PELMARK_THEMES "/") + themeName(), QSettings::IniFormat);
    QApplication::setPalette(paletteOf(theme));
}

QObject* newTest() {
    return new ThemesTest;
}

static QColor groundOf(const QImage& image) {
    std::map<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    const auto commonest =
        std::max_element(counts.cbegin(), counts.cend(), [](const auto& one, const auto& other) {
            return one.second < other.second;
        });
    return QColor(commonest->first);
}

// The contrast that at least 20 pixels reach against the ground: the strokes of a text.
static double textContrast(const QImage& image) {
    const QColor ground = groundOf(image);
    QList<double> contrasts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            contrasts.append(contrast(QColor(image.pixel(x, y)), ground));
    std::sort(contrasts.begin(), contrasts.end(), std::greater());
    return contrasts.value(20);
}

// The themes differ, and the one asked for is the one in force.
void ThemesTest::initTestCase() {
    const int lightness = QApplication::palette().color(QPalette::Window).lightness();
    QCOMPARE(lightness > 128, themeName() == u"light");
}

void ThemesTest::textIsReadable_data() {
    QTest::addColumn<QString>("name");
    for (const char* name :
         {"nameLabel", "hintLabel", "newFileButton", "globalButton", "unzoomButton", "removeButton",
          "saveButton", "saveRemoveButton", "exitButton", "rangeStartEdit", "rangeEndEdit"})
        QTest::newRow(name) << name;
}

void ThemesTest::textIsReadable() {
    QFETCH(QString, name);
    QWidget* widget = parts::widget(name);
    parts::window()->displayLocal();
    if (name == u"hintLabel")
        parts::window()->displayGlobal();
    if (auto* edit = qobject_cast<QLineEdit*>(widget))
        edit->setText(QStringLiteral("1000-2000"));
    parts::window()->setFocus();
    QTRY_VERIFY(widget->isVisible() && widget->width() > 40);
    // The guidelines are content with less for bold text; a button's colours are its own, in each
    // theme.
    const double least = qobject_cast<QPushButton*>(widget) ? 3.0 : 4.5;
    const double reached = textContrast(widget->grab().toImage());
    QVERIFY2(reached >= least, qPrintable(QString::number(reached)));
}

#include "tst_themes.moc"

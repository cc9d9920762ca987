#include "inside.h"

#include "readable_text.h"
#include "window_parts.h"

#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QStyleOption>
#include <QTest>
#include <QToolTip>
#include <algorithm>
#include <map>

// Texts can be read and frames can be seen in the colours of a theme: PELMARK_THEME names one of
// scripts/lib/themes, or is "light" for Qt's own.
class ThemesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void textIsReadable_data();
    void textIsReadable();
    void frameIsVisible_data();
    void frameIsVisible();
    void toolTipHasTheThemesColors_data();
    void toolTipHasTheThemesColors();
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
    QPalette toolTips = QToolTip::palette();
    toolTips.setColor(QPalette::ToolTipBase, colorOf(theme, "Colors:Tooltip/BackgroundNormal"));
    toolTips.setColor(QPalette::ToolTipText, colorOf(theme, "Colors:Tooltip/ForegroundNormal"));
    QToolTip::setPalette(toolTips);
}

QObject* newTest() {
    return new ThemesTest;
}

static QColor backgroundOf(const QImage& image) {
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

// The contrast that the strokes of a text reach: the 20 pixels that differ most from the
// background.
static double textContrast(const QImage& image) {
    const QColor background = backgroundOf(image);
    QList<double> contrasts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            contrasts.append(contrast(QColor(image.pixel(x, y)), background));
    std::sort(contrasts.begin(), contrasts.end(), std::greater());
    return contrasts.value(20);
}

// The requested theme is in force.
void ThemesTest::initTestCase() {
    const int lightness = QApplication::palette().color(QPalette::Window).lightness();
    QCOMPARE(lightness > 128, themeName() == u"light");
}

static void addRows(const QStringList& names) {
    QTest::addColumn<QString>("name");
    for (const QString& name : names)
        QTest::newRow(qPrintable(name)) << name;
}

static const QStringList buttons{"newFileButton", "globalButton", "unzoomButton",
                                 "removeButton",  "saveButton",   "saveRemoveButton",
                                 "exitButton"};

void ThemesTest::textIsReadable_data() {
    addRows(QStringList{"nameLabel", "hintLabel", "rangeStartEdit", "rangeEndEdit"} + buttons);
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
    // A button's colours are the same in every theme; the guidelines ask for less if text is bold.
    const double least = qobject_cast<QPushButton*>(widget) ? 3.0 : 4.5;
    const double reached = textContrast(widget->grab().toImage());
    QVERIFY2(reached >= least, qPrintable(QString::number(reached)));
}

void ThemesTest::frameIsVisible_data() {
    addRows({"checkBox1", "checkBox2", "rangeStartEdit", "rangeEndEdit"});
}

// The contrast with the window that a frame of at most `depth` pixels reaches between `edge` and
// the inside.
static double frameContrast(const QImage& window, QPoint edge, QPoint inward, int depth) {
    double reached = 1;
    for (int i = 0; i < depth; ++i)
        reached = std::max(reached, contrast(window.pixelColor(edge + i * inward),
                                             QApplication::palette().color(QPalette::Window)));
    return reached;
}

// The guidelines ask for 3 around a control. The usual themes keep the frames of their style.
void ThemesTest::frameIsVisible() {
    QFETCH(QString, name);
    parts::window()->displayLocal();
    QWidget* widget = parts::widget(name);
    QTRY_VERIFY(widget->isVisible());
    const bool isUsual = themeName() != u"high-contrast";
    QCOMPARE(widget->palette() == QApplication::palette(widget), isUsual);
    if (isUsual)
        return;
    parts::window()->setFocus();
    QStyleOption option;
    option.initFrom(widget);
    const QRect inWidget =
        qobject_cast<QLineEdit*>(widget)
            ? widget->rect()
            : widget->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, widget);
    const QRect frame = inWidget.translated(widget->pos());
    const QImage window = parts::window()->grab().toImage();
    for (const auto& [edge, inward] : std::initializer_list<std::pair<QPoint, QPoint>>{
             {{frame.left(), frame.center().y()}, {1, 0}},
             {{frame.right(), frame.center().y()}, {-1, 0}},
             {{frame.center().x(), frame.top()}, {0, 1}},
             {{frame.center().x(), frame.bottom()}, {0, -1}}}) {
        const double reached = frameContrast(window, edge, inward, 3);
        QVERIFY2(reached >= 3.0, qPrintable(QString::number(reached)));
    }
}

void ThemesTest::toolTipHasTheThemesColors_data() {
    addRows(QStringList{"imageLabel", "rangeStartEdit"} + buttons);
}

static QWidget* shownToolTip(const QString& text) {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* tip = qobject_cast<QLabel*>(widget);
            tip && tip->inherits("QTipLabel") && tip->isVisible() && tip->text() == text)
            return tip;
    return nullptr;
}

void ThemesTest::toolTipHasTheThemesColors() {
    QFETCH(QString, name);
    parts::window()->displayLocal();
    QWidget* widget = parts::widget(name);
    const QPoint middle = widget->rect().center();
    QHelpEvent event(QEvent::ToolTip, middle, widget->mapToGlobal(middle));
    QApplication::sendEvent(widget, &event);
    QTRY_VERIFY(shownToolTip(widget->toolTip()));
    QWidget* tip = shownToolTip(widget->toolTip());
    const QImage image = tip->grab().toImage();
    QCOMPARE(backgroundOf(image), QToolTip::palette().color(QPalette::ToolTipBase));
    QVERIFY(textContrast(image) >= 4.5);
    QCOMPARE(tip->font(), QToolTip::font());
}

#include "tst_themes.moc"

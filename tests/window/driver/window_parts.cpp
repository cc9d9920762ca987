#include "driver/window_parts.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRubberBand>

namespace {

template <typename Key, auto pointer>
struct Opener {
    friend constexpr auto memberOf(Key) { return pointer; }
};

} // namespace

#define OPEN_MEMBER(type, name)                                                                    \
    namespace {                                                                                    \
    struct name##Key {                                                                             \
        using Pointer = type MyWidget::*;                                                          \
        friend constexpr auto memberOf(name##Key);                                                 \
    };                                                                                             \
    template struct Opener<name##Key, &MyWidget::name>;                                            \
    type name##Of(MyWidget* window) {                                                              \
        constexpr name##Key::Pointer pointer = memberOf(name##Key{});                              \
        return window->*pointer;                                                                   \
    }                                                                                              \
    }

OPEN_MEMBER(QVBoxLayout*, mainLayout)
OPEN_MEMBER(QHBoxLayout*, topLayout)
OPEN_MEMBER(QVBoxLayout*, imageLayout)
OPEN_MEMBER(QHBoxLayout*, topSpareLayout)
OPEN_MEMBER(QVBoxLayout*, middleLayout)
OPEN_MEMBER(QHBoxLayout*, middleSpareLayout)
OPEN_MEMBER(QHBoxLayout*, infoLayout)
OPEN_MEMBER(QHBoxLayout*, bottomLayout)
OPEN_MEMBER(QHBoxLayout*, buttonLayout)
OPEN_MEMBER(QLineEdit*, rangeStartEdit)
OPEN_MEMBER(QLineEdit*, rangeEndEdit)
OPEN_MEMBER(QLabel*, imageLabel)
OPEN_MEMBER(QLabel*, hintLabel)
OPEN_MEMBER(QLabel*, nameLabel)
OPEN_MEMBER(QPushButton*, unzoomButton)
OPEN_MEMBER(QPushButton*, newFileButton)
OPEN_MEMBER(QPushButton*, globalButton)
OPEN_MEMBER(QPushButton*, saveButton)
OPEN_MEMBER(QPushButton*, exitButton)
OPEN_MEMBER(QPushButton*, removeButton)
OPEN_MEMBER(QPushButton*, saveRemoveButton)
OPEN_MEMBER(QCheckBox*, checkBox1)
OPEN_MEMBER(QCheckBox*, checkBox2)
OPEN_MEMBER(QRubberBand*, rubberBand)
OPEN_MEMBER(QPoint, boxStart)
OPEN_MEMBER(QPoint, boxEnd)
OPEN_MEMBER(QStringList, fileList)
OPEN_MEMBER(QString, chosenPath)
OPEN_MEMBER(QPixmap, plotPixmap)
OPEN_MEMBER(QImage, plotImage)
OPEN_MEMBER(QRect, screenRect)
OPEN_MEMBER(QDir, startDir)
OPEN_MEMBER(QPixmap, genomePixmap)

namespace {

QList<std::pair<QString, QObject*>> layouts() {
    MyWidget* window = parts::window();
    return {{"mainLayout", mainLayoutOf(window)},
            {"topLayout", topLayoutOf(window)},
            {"imageLayout", imageLayoutOf(window)},
            {"topSpareLayout", topSpareLayoutOf(window)},
            {"middleLayout", middleLayoutOf(window)},
            {"middleSpareLayout", middleSpareLayoutOf(window)},
            {"infoLayout", infoLayoutOf(window)},
            {"bottomLayout", bottomLayoutOf(window)},
            {"buttonLayout", buttonLayoutOf(window)}};
}

} // namespace

namespace parts {

MyWidget* window() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* window = qobject_cast<MyWidget*>(widget))
            return window;
    return nullptr;
}

QLabel* imageLabel() {
    return imageLabelOf(window());
}
QLabel* hintLabel() {
    return hintLabelOf(window());
}
QLabel* nameLabel() {
    return nameLabelOf(window());
}
QRubberBand* rubberBand() {
    return rubberBandOf(window());
}
QPoint boxStart() {
    return boxStartOf(window());
}
QPoint boxEnd() {
    return boxEndOf(window());
}
QStringList fileList() {
    return fileListOf(window());
}
QString chosenPath() {
    return chosenPathOf(window());
}
QPixmap plotPixmap() {
    return plotPixmapOf(window());
}
QImage plotImage() {
    return plotImageOf(window());
}
QRect screenRect() {
    return screenRectOf(window());
}
QDir startDir() {
    return startDirOf(window());
}
QPixmap genomePixmap() {
    return genomePixmapOf(window());
}

QList<NamedWidget> widgets() {
    MyWidget* window = parts::window();
    return {{"imageLabel", imageLabelOf(window)},
            {"nameLabel", nameLabelOf(window)},
            {"hintLabel", hintLabelOf(window)},
            {"checkBox1", checkBox1Of(window)},
            {"checkBox2", checkBox2Of(window)},
            {"rangeStartEdit", rangeStartEditOf(window)},
            {"rangeEndEdit", rangeEndEditOf(window)},
            {"newFileButton", newFileButtonOf(window)},
            {"globalButton", globalButtonOf(window)},
            {"unzoomButton", unzoomButtonOf(window)},
            {"removeButton", removeButtonOf(window)},
            {"saveButton", saveButtonOf(window)},
            {"saveRemoveButton", saveRemoveButtonOf(window)},
            {"exitButton", exitButtonOf(window)},
            {"rubberBand", rubberBandOf(window)}};
}

QWidget* widget(const QString& name) {
    for (const auto& [widgetName, widget] : widgets())
        if (widgetName == name)
            return widget;
    return nullptr;
}

QString nameOf(const QObject* widgetOrLayout) {
    for (const auto& [name, widget] : widgets())
        if (widget == widgetOrLayout)
            return name;
    for (const auto& [name, layout] : layouts())
        if (layout == widgetOrLayout)
            return name;
    return {};
}

} // namespace parts

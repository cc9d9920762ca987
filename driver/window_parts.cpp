#include "window_parts.h"

#include "give_up.h"

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
    }                                                                                              \
    namespace parts {                                                                              \
    type name() {                                                                                  \
        constexpr name##Key::Pointer pointer = memberOf(name##Key{});                              \
        return window()->*pointer;                                                                 \
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

#define NAMED(name)                                                                                \
    { QStringLiteral(#name), name() }

namespace parts {

MyWidget* window() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* window = qobject_cast<MyWidget*>(widget))
            return window;
    return nullptr;
}

QList<NamedWidget> widgets() {
    return {NAMED(imageLabel),       NAMED(nameLabel),     NAMED(hintLabel),
            NAMED(checkBox1),        NAMED(checkBox2),     NAMED(rangeStartEdit),
            NAMED(rangeEndEdit),     NAMED(newFileButton), NAMED(globalButton),
            NAMED(unzoomButton),     NAMED(removeButton),  NAMED(saveButton),
            NAMED(saveRemoveButton), NAMED(exitButton),    NAMED(rubberBand)};
}

QWidget* widget(const QString& name) {
    for (const auto& [widgetName, widget] : widgets())
        if (widgetName == name)
            return widget;
    giveUp(QStringLiteral("no widget \"%1\"").arg(name));
}

QString nameOf(const QObject* widgetOrLayout) {
    for (const auto& [name, widget] : widgets())
        if (widget == widgetOrLayout)
            return name;
    const QList<std::pair<QString, QObject*>> layouts{
        NAMED(mainLayout),     NAMED(topLayout),    NAMED(imageLayout),
        NAMED(topSpareLayout), NAMED(middleLayout), NAMED(middleSpareLayout),
        NAMED(infoLayout),     NAMED(bottomLayout), NAMED(buttonLayout)};
    for (const auto& [name, layout] : layouts)
        if (layout == widgetOrLayout)
            return name;
    return {};
}

} // namespace parts

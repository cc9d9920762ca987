#include "scenario/window_state.h"
#include "window_parts.h"

#include <QBoxLayout>
#include <QLabel>

namespace {

bool isSeparator(const QLabel* label) {
    return label != nullptr && label->frameStyle() == (int(QFrame::HLine) | int(QFrame::Sunken)) &&
           label->lineWidth() == 2 &&
           label->sizePolicy() == QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QString textOf(QLayoutItem* item);

QString textOf(const QLayout* layout) {
    const char* kind = qobject_cast<const QVBoxLayout*>(layout)   ? "V:"
                       : qobject_cast<const QHBoxLayout*>(layout) ? "H:"
                                                                  : "?:";
    QStringList items;
    for (int i = 0; i < layout->count(); ++i)
        items.append(textOf(layout->itemAt(i)));
    return QLatin1String(kind) + parts::nameOf(layout) + u'(' + items.join(u',') + u')';
}

QString textOf(QLayoutItem* item) {
    if (const QLayout* layout = item->layout())
        return textOf(layout);
    QWidget* widget = item->widget();
    if (widget == nullptr)
        return QStringLiteral("space");
    const QString name = parts::nameOf(widget);
    if (name.isEmpty() && isSeparator(qobject_cast<QLabel*>(widget)))
        return QStringLiteral("separator");
    return name;
}

void collectExceptions(const QBoxLayout* layout, QJsonArray& exceptions) {
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem* item = layout->itemAt(i);
        if (layout->stretch(i) != 0)
            exceptions.append(textOf(item) + QStringLiteral(" is stretched"));
        if (item->alignment() != Qt::Alignment())
            exceptions.append(textOf(item) + QStringLiteral(" is aligned"));
        if (const auto* inner = qobject_cast<const QBoxLayout*>(item->layout()))
            collectExceptions(inner, exceptions);
    }
}

} // namespace

QString layoutText() {
    return textOf(parts::window()->layout());
}

QJsonArray layoutExceptions() {
    QJsonArray exceptions;
    collectExceptions(qobject_cast<const QBoxLayout*>(parts::window()->layout()), exceptions);
    return exceptions;
}

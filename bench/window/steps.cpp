#include "window/steps.h"

#include "give_up.h"
#include "places.h"
#include "pointer.h"
#include "window_parts.h"

#include <QLabel>
#include <QMap>

namespace {

void click(const char* widget) {
    pointer::click(parts::widget(QLatin1String(widget)));
}

void pickLast() {
    const QPoint place = places::of(places::genomeCoordinate(Tag.constLast(), 50.0), maxY / 2);
    pointer::drawBox(parts::imageLabel(), place - QPoint(1, 0), place + QPoint(1, 20));
}

// A box over the whole height, with as large a margin at each side, in hundredths of the width.
void zoom(int margin) {
    pointer::drawBox(parts::imageLabel(), {fwidth * margin / 100, 0},
                     {fwidth * (100 - margin) / 100, fheight});
}

} // namespace

Step stepNamed(const QString& name) {
    static const QMap<QString, std::function<void()>> actions{
        {"pick-last", pickLast},
        {"zoom-wide", [] { zoom(5); }},
        {"zoom-narrow", [] { zoom(48); }},
        {"unzoom", [] { click("unzoomButton"); }},
        {"remove", [] { click("removeButton"); }},
        {"join", [] { click("checkBox1"); }},
        {"part", [] { click("checkBox1"); }},
        {"lines-off", [] { click("checkBox2"); }},
        {"lines-on", [] { click("checkBox2"); }},
    };
    if (!actions.contains(name))
        giveUp(QStringLiteral("no step \"%1\"").arg(name));
    return {name, actions[name]};
}

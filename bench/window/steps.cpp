#include "window/steps.h"

#include "window/pointing.h"

#include "hfile.h"

#include <QMap>
#include <cstdlib>

namespace {

int columnOf(int genomeCoordinate) {
    return static_cast<int>(GLOBAL_pixPerX * (genomeCoordinate - GLOBAL_minX));
}

void pickLast() {
    const int middle = (columnOf(Start_value.constLast()) + columnOf(End_value.constLast())) / 2;
    pointing::drawBox({middle - 1, fheight / 2}, {middle + 1, fheight / 2 + 20});
}

// A box over the whole height, with as large a margin at each side, in hundredths of the width.
void zoom(int margin) {
    pointing::drawBox({fwidth * margin / 100, 0}, {fwidth * (100 - margin) / 100, fheight});
}

} // namespace

Step stepNamed(const QString& name) {
    static const QMap<QString, std::function<void()>> actions{
        {"pick-last", pickLast},
        {"zoom-wide", [] { zoom(5); }},
        {"zoom-narrow", [] { zoom(48); }},
        {"unzoom", [] { pointing::click("unzoomButton"); }},
        {"remove", [] { pointing::click("removeButton"); }},
        {"join", [] { pointing::click("checkBox1"); }},
        {"part", [] { pointing::click("checkBox1"); }},
        {"lines-off", [] { pointing::click("checkBox2"); }},
        {"lines-on", [] { pointing::click("checkBox2"); }},
    };
    if (!actions.contains(name)) {
        qCritical("no step \"%s\"", qPrintable(name));
        std::exit(2);
    }
    return {name, actions[name]};
}

#pragma once

#include <QString>
#include <functional>

// What a user does in the window, as one would with the mouse. Each answer is on screen when the
// plot has been painted again.
struct Step {
    QString name;
    std::function<void()> act;
};

// Known names: pick-last (a box over the last chromosome of the genome view), zoom-wide and
// zoom-narrow (a box over nearly all or over little of the chromosome view), unzoom, remove, join
// and part (check box 1), lines-off and lines-on (check box 2). Ends the process for any other.
Step stepNamed(const QString& name);

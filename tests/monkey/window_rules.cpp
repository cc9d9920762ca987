#include "window_rules.h"

#include "plain_geometry.h"
#include "plain_numbers.h"
#include "window_parts.h"

#include <QFile>
#include <QLabel>
#include <bit>
#include <cstdint>
#include <functional>

namespace {

bool isSame(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool listsAreAligned() {
    return Pos_list.size() == Value_list.size() && Pos_list2.size() == Value_list2.size();
}

// Also in its order.
bool shownSetIsOfWorkingSet() {
    qsizetype next = 0;
    for (qsizetype i = 0; i < Pos_list2.size() && next < Pos_list.size(); ++i)
        if (Pos_list[next] == Pos_list2[i] && isSame(Value_list[next], Value_list2[i]))
            ++next;
    return next == Pos_list.size();
}

bool indexIsAligned() {
    const qsizetype count = Tag.size();
    return count > 0 && Start_index.size() == count && End_index.size() == count &&
           Start_value.size() == count && End_value.size() == count && Color_value.size() == count;
}

// By design, each chromosome starts one place after the end of the one before.
bool indicesAreInRange() {
    if (Start_index.first() != 0 || selected_chromosome < -1)
        return false;
    for (qsizetype i = 0; i < Tag.size(); ++i) {
        const bool isLast = i + 1 == Tag.size();
        if (Color_value[i] != (i % 2 == 0 ? 255 : 50) || End_index[i] < 0)
            return false;
        if (!isLast && Start_index[i + 1] != End_index[i] + 1)
            return false;
    }
    return true;
}

bool pictureHasItsSize() {
    const QSize size = plain::imageSize(parts::screenRect().size());
    return QSize(fwidth, fheight) == size && parts::imageLabel()->pixmap().size() == size;
}

bool pictureIsThatOfTheView() {
    const QPixmap kept = globaldisplay == 1 ? parts::genomePixmap() : parts::plotPixmap();
    return parts::imageLabel()->pixmap().cacheKey() == kept.cacheKey();
}

bool scaleIsThatOfTheRange() {
    const double expected = static_cast<double>(fwidth) / plain::difference(maxX, minX);
    return isSame(pixPerX, expected) && isSame(pixPerY, fheight / (maxY - minY)) && xmargin == 0 &&
           xmargin2 == 0 && ymargin == 0;
}

bool widgetsAreThoseOfTheView() {
    const bool isChromosomeView = globaldisplay == 0;
    for (const char* name : {"checkBox1", "checkBox2", "globalButton", "unzoomButton",
                             "removeButton", "saveRemoveButton", "rangeStartEdit", "rangeEndEdit"})
        if (parts::widget(QLatin1String(name))->isVisibleTo(parts::window()) != isChromosomeView)
            return false;
    for (const char* name :
         {"newFileButton", "saveButton", "exitButton", "imageLabel", "nameLabel", "hintLabel"})
        if (!parts::widget(QLatin1String(name))->isVisibleTo(parts::window()))
            return false;
    return parts::hintLabel()->text().isEmpty() == isChromosomeView;
}

// Each line is on disk as soon as it is written, and "select chrom" is never the last line.
bool logEndsWell() {
    QFile log(QStringLiteral("Pelmark_log.txt"));
    if (!log.open(QIODevice::ReadOnly))
        return false;
    const QByteArray text = log.readAll();
    const QByteArray lastLine = text.trimmed().split('\n').last();
    return text.startsWith("Pelmark 0.1 by the Pelmark authors\n\n") && text.endsWith('\n') &&
           (lastLine.startsWith("Pelmark 0.1") || lastLine == "Get GLOBAL" ||
            lastLine.startsWith("selected chromosome by getManhattan"));
}

bool optionsAreChecked() {
    return (line == 0 || line == 1) && (stripes == 0 || stripes == 1) && save_counter == 0 &&
           defaultname[50] == '\0' && shortname[30] == '\0';
}

struct Rule {
    const char* words;
    bool (*holds)();
};

constexpr Rule rules[] = {
    {"the lists are aligned", listsAreAligned},
    {"the shown set is within the working set", shownSetIsOfWorkingSet},
    {"the chromosome index is aligned", indexIsAligned},
    {"the indices are in range", indicesAreInRange},
    {"the picture has its size", pictureHasItsSize},
    {"the picture is that of the view", pictureIsThatOfTheView},
    {"the scale is that of the range", scaleIsThatOfTheRange},
    {"the widgets are those of the view", widgetsAreThoseOfTheView},
    {"the log ends well", logEndsWell},
    {"the options are options", optionsAreChecked},
};

} // namespace

QStringList brokenRules() {
    QStringList broken;
    for (const Rule& rule : rules)
        if (!rule.holds())
            broken.append(QLatin1String(rule.words));
    return broken;
}

#include "help_texts.h"

#include <QString>
#include <QWidget>
#include <algorithm>
#include <iterator>

namespace {

struct HelpText {
    const char* objectName;
    const char* accessibleName; // empty where the widget's own text is its name
    const char* toolTip;
    const char* whatsThis;
};

constexpr HelpText helpTexts[] = {
    {"imageLabel", "Plot", "Draw a box to open a chromosome, or to zoom in",
     "The markers, -log10 of the p-value upwards against position. In the genome view a box drawn "
     "with the mouse opens the chromosome under its middle. In the chromosome view it zooms to the "
     "points inside the box."},
    {"nameLabel", "", "The name of the data file",
     "The name of the data file, at most its first 30 bytes. The file itself is never changed."},
    {"hintLabel", "", "What to do next", "What to do next in the genome view."},
    {"checkBox1", "Join the points with lines", "Join the points with lines",
     "Draws lines from point to point, in the order of the file, instead of dots."},
    {"checkBox2", "Reference lines", "Show reference lines at -log10 P of 3, 4, 5, 6 and 7.3",
     "Draws lines at -log10 P of 3, 4, 5, 6 and 7.3; the green one at 7.3 is a p-value of 5e-8, "
     "the "
     "usual level of genome-wide significance."},
    {"rangeStartEdit", "First position to mark",
     "First position to mark in red, or a range as in 1000-2000",
     "The first position of a range that is marked in red, in base pairs; or the whole range, as "
     "in "
     "1000-2000. It shows when the plot is next drawn: a click on a check box does so."},
    {"rangeEndEdit", "Last position to mark", "Last position to mark in red",
     "The last position of the range that is marked in red, in base pairs. It is not needed when "
     "the "
     "field before holds the whole range."},
    {"newFileButton", "", "Open another file", "Asks for a file, reads it and shows it."},
    {"globalButton", "", "Go back to the plot of all chromosomes",
     "Shows the plot of all chromosomes as it was when the file was opened. For a file with one "
     "chromosome it does nothing."},
    {"unzoomButton", "", "Show all points that were not removed",
     "Ends the zoom: shows all points of the chromosome that were not removed."},
    {"removeButton", "", "Take the points in view out of the data",
     "Takes all points in the range of the view out of the data and shows what remains. The data "
     "file "
     "keeps them: picking the chromosome anew brings them back."},
    {"saveButton", "", "Save the points in view as a table, and the plot as a picture",
     "In the chromosome view: asks for a name, and writes the points in view to a table and the "
     "plot "
     "to a PNG picture beside it. In the genome view: writes the plot only, under the name of the "
     "data "
     "file. Older files of those names are replaced."},
    {"saveRemoveButton", "", "Save the points in view, then take them out of the data",
     "Saves as Save does, then removes as Remove Selection does."},
    {"exitButton", "", "End the program; what is not saved is lost",
     "Ends the program at once. What was not saved is lost."},
};

const HelpText& helpFor(const char* objectName) {
    return *std::find_if(std::begin(helpTexts), std::end(helpTexts), [&](const HelpText& help) {
        return QLatin1String(help.objectName) == QLatin1String(objectName);
    });
}

} // namespace

void describe(std::initializer_list<std::pair<QWidget*, const char*>> namedWidgets) {
    for (const auto& [widget, objectName] : namedWidgets) {
        const HelpText& help = helpFor(objectName);
        widget->setObjectName(QLatin1String(objectName));
        widget->setAccessibleName(QLatin1String(help.accessibleName));
        widget->setToolTip(QLatin1String(help.toolTip));
        widget->setWhatsThis(QLatin1String(help.whatsThis));
    }
}

#include "help_texts.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QWidget>

namespace {

// A tool tip takes the style sheet of the widget that it is shown for. Shown for the window
// instead, it keeps the theme's colours on the buttons too.
class ThemedToolTips : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::ToolTip)
            return false;
        const auto& widget = dynamic_cast<const QWidget&>(*watched);
        const auto& help = dynamic_cast<const QHelpEvent&>(*event);
        QToolTip::showText(help.globalPos(), widget.toolTip(), widget.window());
        return true;
    }
};

} // namespace

namespace helpTexts {

const HelpText imageLabel{"imageLabel", "Plot", "Draw a box to open a chromosome, or to zoom in",
                          "The markers: -log10 of the p-value against position. In the genome "
                          "view, a box drawn with the mouse opens the chromosome under its middle. "
                          "In the chromosome view, it zooms to the points inside the box."};
const HelpText nameLabel{
    "nameLabel", "", "The name of the data file",
    "The name of the data file, at most its first 30 bytes. The file itself is never changed."};
const HelpText hintLabel{"hintLabel", "", "What to do next", "What to do next in the genome view."};
const HelpText checkBox1{
    "checkBox1", "Join the points with lines", "Join the points with lines",
    "Draws lines from point to point, in the order of the file, instead of dots."};
const HelpText checkBox2{"checkBox2", "Reference lines",
                         "Show reference lines at -log10 P of 3, 4, 5, 6 and 7.3",
                         "Draws lines at -log10 P of 3, 4, 5, 6 and 7.3. The green line at 7.3 is "
                         "a p-value of 5e-8, the usual level of genome-wide significance."};
const HelpText rangeStartEdit{"rangeStartEdit", "First position to mark",
                              "First position to mark in red, or a range such as 1000-2000",
                              "The first position of a range to mark in red, in base pairs, or the "
                              "whole range, such as 1000-2000. The marks appear when the plot is "
                              "next drawn, for example after a click on a check box."};
const HelpText rangeEndEdit{"rangeEndEdit", "Last position to mark", "Last position to mark in red",
                            "The last position of the range to mark in red, in base pairs. Not "
                            "needed if the first field holds the whole range."};
const HelpText newFileButton{"newFileButton", "", "Open another file",
                             "Asks for a file, reads it and shows it."};
const HelpText globalButton{"globalButton", "", "Go back to the plot of all chromosomes",
                            "Shows the plot of all chromosomes as it was when the file was opened. "
                            "Does nothing for a file with one chromosome."};
const HelpText unzoomButton{
    "unzoomButton", "", "Show all points that were not removed",
    "Ends the zoom: shows all points of the chromosome that were not removed."};
const HelpText removeButton{
    "removeButton", "", "Remove the points in view from the data",
    "Removes all points in the range of the view from the data and shows what remains. The data "
    "file keeps them: opening the chromosome again brings them back."};
const HelpText saveButton{
    "saveButton", "", "Save the points in view as a table, and the plot as a picture",
    "In the chromosome view: asks for a name, and writes the points in view to a table and the "
    "plot to a PNG picture beside it. In the genome view: writes only the plot, under the name of "
    "the data file. Older files of those names are replaced."};
const HelpText saveRemoveButton{"saveRemoveButton", "",
                                "Save the points in view, then remove them from the data",
                                "Saves as Save does, then removes as Remove Selection does."};
const HelpText exitButton{"exitButton", "", "End the program; anything not saved is lost",
                          "Ends the program at once. Anything not saved is lost."};

} // namespace helpTexts

void describe(std::initializer_list<std::pair<QWidget*, HelpText>> widgets) {
    for (const auto& [widget, help] : widgets) {
        widget->setObjectName(QLatin1String(help.objectName));
        widget->setAccessibleName(QLatin1String(help.accessibleName));
        widget->setToolTip(QLatin1String(help.toolTip));
        widget->setWhatsThis(QLatin1String(help.whatsThis));
        widget->installEventFilter(new ThemedToolTips(widget));
    }
}

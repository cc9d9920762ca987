#pragma once

#include <initializer_list>
#include <utility>

class QWidget;

// What explains a widget to those who ask.
struct HelpText {
    const char* objectName;
    const char* accessibleName; // empty where the widget's own text is its name
    const char* toolTip;
    const char* whatsThis;
};

// One for each widget of the window, by its member's name.
namespace helpTexts {
extern const HelpText imageLabel;
extern const HelpText nameLabel;
extern const HelpText hintLabel;
extern const HelpText checkBox1;
extern const HelpText checkBox2;
extern const HelpText rangeStartEdit;
extern const HelpText rangeEndEdit;
extern const HelpText newFileButton;
extern const HelpText globalButton;
extern const HelpText unzoomButton;
extern const HelpText removeButton;
extern const HelpText saveButton;
extern const HelpText saveRemoveButton;
extern const HelpText exitButton;
} // namespace helpTexts

// Gives each widget its object name and its texts. Tool tips keep the theme's colours.
void describe(std::initializer_list<std::pair<QWidget*, HelpText>> widgets);

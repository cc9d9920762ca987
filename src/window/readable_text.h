#pragma once

#include <QColor>

class QWidget;

// The colour for text on a background that is not the theme's: the theme's `themed` where it can be
// read there, else black or white, whichever contrasts more.
QColor readableText(const QColor& themed, const QColor& background);

// Gives a field or check box a frame in the theme's text colour if its style would not show one.
// Leaves the widget alone in themes where field and background, or the shades of the background,
// differ.
void ensureVisibleFrame(QWidget& widget);

// The contrast of two colours, from 1 to 21, as defined by the Web Content Accessibility
// Guidelines, which ask for at least 4.5 between text and background.
double contrast(const QColor& one, const QColor& other);

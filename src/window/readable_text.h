#pragma once

#include <QColor>

// The colour for a text that the theme wants in `themed`, on a ground that is not the theme's: the
// same colour where it can be read there, else black or white, whichever stands out more.
QColor readableText(const QColor& themed, const QColor& ground);

// How far two colours stand apart, from 1 to 21, as the Web Content Accessibility Guidelines
// measure it; a text can be read from 4.5 on.
double contrast(const QColor& one, const QColor& other);

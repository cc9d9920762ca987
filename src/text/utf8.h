#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <string_view>

// Converts between UTF-16 and UTF-8 without loss. A lone surrogate, which strict UTF-8 cannot
// represent, becomes a three-byte code, so that different texts never become the same bytes.

// Joins a surrogate pair that was split between two calls.
void appendUtf8(QStringView text, QByteArray& bytes);
QString fromUtf8(std::string_view bytes);

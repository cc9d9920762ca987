#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

// The pages for users, and what is in them.
namespace pages {

QString sourcePath(const QString& name); // of a file in the repository
QString textOf(const QString& path);

// What the pattern's first group finds, in the order of the text.
QStringList found(const QString& text, const QString& pattern);

// From a heading, such as "## check", to the next one of its level or above.
QString part(const QString& page, const QString& heading);

// The blocks of commands with what they print: after each "$ " a command, then its output.
QStringList examples(const QString& page);

// The same text, printed by a shell that runs the example's commands in a folder.
QString played(const QString& example, const QString& folder);

// The scenario that the pictures are taken from, on a screen of that size. States are dumped in
// place of the pictures, under their names, but for those of dialogs.
QStringList scenario(const QString& name);
constexpr QSize pictureScreen(1024, 768);

} // namespace pages

#pragma once

#include "report/programs.h"

Run tools(const QStringList& arguments);
Run pipeline(const QString& shell);

// Makes two tables of at most a thousand rows in the work folder, as the window saves them: of the
// first chromosome of the file and of the last. Returns their names.
QStringList savedTables(const QString& file);

#pragma once

#include "refusal.h"

#include <QByteArray>
#include <QString>
#include <string_view>
#include <variant>
#include <vector>

// A table that the window saved.
struct SavedTable {
    struct Row {
        int position = 0; // base pairs
        int size = 0;     // of its numbers' text
        size_t numbers = 0;
        qint64 line = 0; // from 1, titles included
    };

    std::vector<Row> rows;
    QByteArray text; // all rows' numbers

    // The row's P and -log10(P) as they stand, a tab between them.
    std::string_view numbers(const Row& row) const {
        return {text.constData() + row.numbers, static_cast<size_t>(row.size)};
    }
};

// Reads a table, plain or packed. Refuses one that does not have the window's titles, and a line
// that the window cannot have written.
std::variant<SavedTable, Refusal> readSavedTable(const QString& path);

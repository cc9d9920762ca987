#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <functional>
#include <memory>
#include <string_view>

struct OrderedRow {
    quint32 chromosome = 0; // the number that add() was given
    int position = 0;
    std::string_view text; // valid until the next call
};

// Puts rows into order of chromosome and position; ties stay in the order in which they came. Rows
// are kept in memory, at 16 bytes and their text each and some more while they are sorted, and go
// to temporary files in sorted runs where that would need more than the limit.
class OrderedRows {
public:
    explicit OrderedRows(qint64 memory); // bytes
    ~OrderedRows();

    // False when a temporary file could not be written; error() says why.
    bool add(quint32 chromosome, int position, std::string_view text);

    // Ends adding. `rank[c]` is the place of chromosome c in the order.
    bool sort(const QList<quint32>& rank);

    // The next row in order. False after the last one, or when a temporary file cannot be read.
    bool next(OrderedRow& row);

    QString error() const; // empty while nothing failed

private:
    struct Implementation;
    std::unique_ptr<Implementation> m;
};

#pragma once

#include <QByteArray>

class QIODevice;

// The first lines of a table, as many as understand() looks at.
struct TableHead {
    QByteArray text;       // whole lines, in UTF-8, without carriage returns
    bool isWhole = false;  // the table ends there
    bool isFailed = false; // the device could not be read
};

// The device is open for reading, at its start.
TableHead readTableHead(QIODevice& device);

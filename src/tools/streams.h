#pragma once

#include <QIODevice>
#include <QString>

// Where a command's report and its messages go.
struct Streams {
    QIODevice& out;
    QIODevice& error;
    bool isErrorTerminal = false;
};

// Writes "pelmark-tools: message" and a line feed to the error stream.
void complain(Streams& streams, const QString& message);

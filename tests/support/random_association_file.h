#pragma once

#include <QByteArray>
#include <QString>

class Random;

// A small association file such as no tool should write and some do: any delimiter, line end and
// encoding, odd numbers, labels that come back, short, long and empty lines, bytes that are no
// text. Most of them can be read all the same.
struct RandomAssociationFile {
    QByteArray bytes;
    QString label; // one that most likely occurs in it
};

RandomAssociationFile randomAssociationFile(Random& random);

#pragma once

#include "prepare_options.h"
#include "prepare_report.h"
#include "refusal.h"

#include <QFileDevice>
#include <QStringList>
#include <functional>
#include <variant>

// Tables to be made into one that the window opens and shows rightly.
struct PrepareJob {
    QStringList
        inputs; // files with the same columns, such as one a chromosome; read more than once
    PrepareOptions options;
    QFileDevice* dropped = nullptr; // receives each dropped line after its reason and number; of
                                    // several inputs, the name stands between the two
    std::function<void(qint64 bytes)> progress = [](qint64) {}; // packed bytes read so far
    QStringList names = {}; // of the inputs, for `dropped` where there are several
};

// Writes Chr, Position, P and -log10(P), the marker's name where there is one, and what the options
// add; tab-separated, in order of chromosome and position. The output is open for reading and
// writing, empty, and random-access; what it holds after a refusal is undefined.
std::variant<PrepareReport, Refusal> prepare(const PrepareJob& job, QFileDevice& output);

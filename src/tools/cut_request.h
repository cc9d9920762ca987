#pragma once

#include "marker_choice.h"
#include "scan_command.h"
#include "table_match.h"

#include <optional>
#include <utility>
#include <vector>

// What a command line names of a result file's lines.
struct CutRequest {
    std::vector<WantedTable> tables; // inputs 1, 2 ... of the command; the result file is input 0
    QList<std::pair<QByteArray, Region>> regions; // with their texts
    QList<QList<QByteArray>> lists;               // of names; the inputs after the tables
};

// Opens all files and reads what they and the options name. The exit status where that fails.
std::optional<int> readRequest(const Arguments& arguments, ScanCommand& command,
                               CutRequest& request);

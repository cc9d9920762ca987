#pragma once

#include "fault.h"
#include "hfile.h"

#include <variant>

// The log, which receives every message of the program, and the end of the process at a fault.

// Truncates and reopens the log and writes its header. Exits with status 1 if that fails, since no
// error could be reported.
void restartLog();

// Each call is flushed, so that a process that is killed leaves its whole log too.
template <typename... Texts>
void writeLog(const Texts&... texts) {
    (error_stream << ... << texts) << Qt::flush;
}

// Writes the last words and ends the process with status 1.
[[noreturn]] void endProcess(const QString& lastWords);
[[noreturn]] void endProcess(const Fault& fault);

template <typename T>
T valueOrEnd(Result<T> result) {
    if (const Fault* fault = std::get_if<Fault>(&result))
        endProcess(*fault);
    return std::get<T>(std::move(result));
}

#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <cstdio>
#include <utility>

// Runs the task, prints "NAME SECONDS" to standard output, and returns the task's result.
template <typename Task>
auto timed(const QByteArray& name, Task task) {
    QElapsedTimer watch;
    watch.start();
    auto result = task();
    std::printf("%s %.6f\n", name.constData(), static_cast<double>(watch.nsecsElapsed()) * 1e-9);
    return result;
}

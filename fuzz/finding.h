#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>

// What the fuzzer, or the replay, calls with each input. Returns 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

// Ends the process, which tells the fuzzer that this input shows a fault; unless `holds`.
void mustHold(bool holds, const char* what, const QString& expected = {}, const QString& got = {});

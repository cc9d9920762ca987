#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>

// The fuzzer, or the replay, calls this with each input. Returns 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

// Aborts the process unless `holds`, which reports the input as a finding.
void mustHold(bool holds, const char* what, const QString& expected = {}, const QString& got = {});

// Runs the harness on each file named on the command line, and on each file of a named folder.

#include "finding.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

int replay(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(file)),
                                  std::istreambuf_iterator<char>());
    std::printf("%s\n", path.c_str());
    std::fflush(stdout); // a finding aborts the process
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return 1;
}

int replayAll(const std::filesystem::path& path) {
    if (!std::filesystem::is_directory(path))
        return replay(path);
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path))
        if (entry.is_regular_file())
            count += replay(entry.path());
    return count;
}

} // namespace

int main(int argc, char* argv[]) {
    int count = 0;
    for (int i = 1; i < argc; ++i)
        count += replayAll(argv[i]);
    std::printf("%d inputs, no finding\n", count);
    return count > 0 ? 0 : 1;
}

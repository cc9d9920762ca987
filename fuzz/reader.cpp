// The reader against the reference: any difference in points, labels or fault is a finding.
// Input: block size, which label to load, how often to repeat the file, the file.

#include "finding.h"
#include "input.h"
#include "support/reading.h"

namespace {

constexpr qsizetype longestFile = 40'000; // bytes; several of the chunks in which text is decoded

QByteArray repeated(const QByteArray& file, int power) {
    const qsizetype most = longestFile / std::max<qsizetype>(file.size(), 1);
    return file.repeated(
        std::clamp<qsizetype>(qsizetype{1} << power, 1, std::max(most, qsizetype{1})));
}

// Usually one of the file's own labels; otherwise the file's last bytes.
QString labelToLoad(const Result<GenomeScan>& scanned, int choice, const QByteArray& file) {
    const auto* scan = std::get_if<GenomeScan>(&scanned);
    if (scan && choice < 200)
        return scan->chromosomes[choice % scan->chromosomes.size()].label;
    return QString::fromUtf8(file.right(choice % 16));
}

template <typename T>
void mustBeSame(const char* what, const Result<T>& got, const Result<T>& expected) {
    if (!isSame(got, expected))
        mustHold(false, what, told(expected), told(got));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    const int block = input.number<std::uint8_t>();
    const int choice = input.number<std::uint8_t>();
    const int power = input.below(16);
    const QByteArray file = repeated(input.rest(), power < 8 ? 0 : power);
    // A long file in blocks of a few bytes would take most of the time and show nothing new.
    const qsizetype blockSize = file.size() > 4096 ? block + 100 : block;
    const qsizetype largerBlockSize = blockSize * 64;

    const Result<GenomeScan> expectedScan = plainScan(file);
    mustBeSame("scan", scan(file, blockSize), expectedScan);
    mustBeSame("scan in larger blocks", scan(file, largerBlockSize), expectedScan);
    const QString label = labelToLoad(expectedScan, choice, file);
    const Result<Points> expectedLoad = plainLoad(file, label);
    mustBeSame("load", load(file, label, blockSize), expectedLoad);
    mustBeSame("load in larger blocks", load(file, label, largerBlockSize), expectedLoad);
    return 0;
}

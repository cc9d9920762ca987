// Writes a generated file, to profile a program with:
//     generate_scan LAYOUT MARKERS FILE [SEED]

#include "generate/scan_layout.h"

#include <QFile>
#include <algorithm>
#include <cstdio>

namespace {

int usage() {
    std::fputs("usage: generate_scan LAYOUT MARKERS FILE [SEED]\nlayouts:\n", stderr);
    std::fprintf(stderr, "  %-17s %s\n", "plain", plainLayout().description.c_str());
    for (const ScanLayout& layout : oddLayouts())
        std::fprintf(stderr, "  %-17s %s\n", layout.name.c_str(), layout.description.c_str());
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 4)
        return usage();
    std::vector<ScanLayout> layouts = oddLayouts();
    layouts.push_back(plainLayout());
    const auto layout = std::find_if(layouts.begin(), layouts.end(),
                                     [&](const ScanLayout& each) { return each.name == argv[1]; });
    const qlonglong markers = QByteArray(argv[2]).toLongLong();
    if (layout == layouts.end() || markers < 1)
        return usage();
    QFile file(QString::fromLocal8Bit(argv[3]));
    const quint64 seed = argc > 4 ? QByteArray(argv[4]).toULongLong() : 1;
    if (file.open(QIODevice::WriteOnly) && writeScan(file, *layout, markers, seed) && file.flush())
        return 0;
    std::fprintf(stderr, "cannot write %s\n", argv[3]);
    return 1;
}

#include "report/comparison.h"
#include "report/scan_file.h"
#include "report/table.h"
#include "report/tools_runs.h"

#include <QFile>
#include <QFileInfo>

namespace {

// Makes a new file. To replace one, the file system first writes the new one to the disk.
Run makes(const QString& output, const Run& run) {
    return [output, run] {
        QFile::remove(output);
        return run();
    };
}

Run prepare(const QString& file) {
    const QString output = inWorkFolder("prepared.txt");
    return makes(output, tools({"prepare", file, "-o", output, "--quiet"}));
}

// The columns that prepare writes, by the usual means.
const char* const awk =
    "awk -F'\t' 'NR == 1 { print \"Chr\\tPosition\\tP\\t-log10(P)\\tID\"; next } "
    "{ printf \"%s\\t%s\\t%s\\t%.6g\\t%s\\n\", $1, $2, $9, -log($9) / log(10), $3 }'";

// Looks the rows of the tables up by position and p.
const char* const awkDrop = "awk -F'\t' 'FNR == 1 { ++file } file < 3 { named[$2, $3]; next } "
                            "!(($2, $9) in named)' ";

class Packed {
public:
    explicit Packed(const QString& file) : m_path(file + ".gz") {
        pipeline("gzip -c '" + file + "' > '" + m_path + "'")();
    }
    ~Packed() { QFile::remove(m_path); }
    Q_DISABLE_COPY_MOVE(Packed)
    QString path() const { return m_path; }

private:
    const QString m_path;
};

} // namespace

QList<Verdict> reportTools(const Plan& plan) {
    const qint64 lines = plan.upTo(10'000'000);
    ScanLayout shuffled = plainLayout();
    shuffled.name = "shuffled";
    shuffled.isSorted = false;
    const ScanFile file(plainLayout(), lines), random(shuffled, lines);
    const Packed packed(file.path());
    const QString byAwk = inWorkFolder("by_awk.txt");
    const QStringList tables = savedTables(file.path());
    const QString dropped = inWorkFolder("dropped.txt");
    const Run drop = makes(dropped, tools(QStringList{"drop", file.path()} + tables +
                                          QStringList{"-q", "-o", dropped}));
    const QString dropByAwk = awkDrop + tables.join(' ') + ' ' + file.path() + " > " + byAwk;
    const Program opening{"the window's opening", window({file.path()}), {}, "open"};
    const auto plot = [&](const char* picture, const QStringList& options) {
        return Program{
            "",
            tools(QStringList{"plot", file.path(), "-q", "-o", inWorkFolder(picture)} + options)};
    };
    QList<Verdict> verdicts = compare(
        plan, "pelmark-tools", lines,
        {{"check",
          {"", tools({"check", "--quiet", file.path()})},
          {"the window's reading", parts({"scan", file.path()}), {}, "scan"},
          "check-vs-scan"},
         {"prepare",
          {"", prepare(file.path())},
          {"`wc -l`", command({"wc", "-l", file.path()})},
          "prepare-vs-wc",
          "prepare-memory"},
         {"prepare, gzip",
          {"", prepare(packed.path())},
          {"`zcat | wc -l`", pipeline("zcat '" + packed.path() + "' | wc -l")},
          "prepare-gzip-vs-zcat"},
         {"prepare, gzip",
          {"", prepare(packed.path())},
          {"`zcat | awk`",
           makes(byAwk, pipeline("zcat '" + packed.path() + "' | " + awk + " > " + byAwk))},
          "prepare-gzip-vs-awk"},
         {"hits",
          {"", tools({"hits", "--quiet", file.path(), "-o", inWorkFolder("hits.tsv")})},
          {"the window's reading", parts({"scan", file.path()}), {}, "scan"},
          "hits-vs-scan"},
         {"prepare, random order",
          {"", prepare(random.path())},
          {"in order", prepare(file.path())},
          "prepare-random-vs-ordered",
          "prepare-random-memory"},
         {"drop", {"", drop}, {"`wc -l`", command({"wc", "-l", file.path()})}, "drop-vs-wc"},
         {"drop", {"", drop}, {"awk", makes(byAwk, pipeline(dropByAwk))}, "drop-vs-awk"},
         {"plot, PNG", plot("plot.png", {}), opening, "plot-png-vs-open"},
         {"plot, PDF", plot("plot.pdf", {}), opening, "plot-pdf-vs-open"},
         {"plot, quantiles", plot("qq.png", {"--qq"}), opening, "plot-qq-vs-open"}});
    verdicts << addBytes(plan.bars["plot-pdf-size"], "plot, PDF: size of the file", lines,
                         static_cast<double>(QFileInfo(inWorkFolder("plot.pdf")).size()));
    for (const char* name : {"prepared.txt", "by_awk.txt", "dropped.txt", "head.txt", "tail.txt",
                             "hits.tsv", "plot.png", "plot.pdf", "qq.png"})
        QFile::remove(inWorkFolder(name));
    return verdicts;
}

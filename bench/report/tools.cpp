#include "report/comparison.h"
#include "report/scan_file.h"

#include <QFile>

namespace {

Run tools(const QStringList& arguments) {
    return command(QStringList(QStringLiteral(PELMARK_TOOLS)) + arguments);
}

Run pipeline(const QString& shell) {
    return command({"bash", "-o", "pipefail", "-c", shell});
}

Run prepare(const QString& file) {
    return tools({"prepare", file, "-o", inWorkFolder("prepared.txt"), "--quiet"});
}

// The columns that prepare writes, by the usual means.
const char* const awk =
    "awk -F'\t' 'NR == 1 { print \"Chr\\tPosition\\tP\\t-log10(P)\\tID\"; next } "
    "{ printf \"%s\\t%s\\t%s\\t%.6g\\t%s\\n\", $1, $2, $9, -log($9) / log(10), $3 }'";

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
    const QString out = " > " + inWorkFolder("by_awk.txt");
    const QList<Verdict> verdicts =
        compare(plan, "pelmark-tools", lines,
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
                  {"`zcat | awk`", pipeline("zcat '" + packed.path() + "' | " + awk + out)},
                  "prepare-gzip-vs-awk"},
                 {"hits",
                  {"", tools({"hits", "--quiet", file.path(), "-o", inWorkFolder("hits.tsv")})},
                  {"the window's reading", parts({"scan", file.path()}), {}, "scan"},
                  "hits-vs-scan"},
                 {"prepare, random order",
                  {"", prepare(random.path())},
                  {"in order", prepare(file.path())},
                  "prepare-random-vs-ordered",
                  "prepare-random-memory"}});
    for (const char* name : {"prepared.txt", "by_awk.txt", "hits.tsv"})
        QFile::remove(inWorkFolder(name));
    return verdicts;
}

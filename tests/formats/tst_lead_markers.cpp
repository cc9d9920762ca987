#include "lead_markers.h"
#include "plain_leads.h"
#include "support/random.h"

#include <QTest>
#include <algorithm>
#include <numeric>

// Which markers are leads, and what is said of their surroundings.
class LeadMarkers : public QObject {
    Q_OBJECT

private slots:
    void leads_data();
    void leads();
    void agreesWithThePlainWay();
};

namespace {

struct Marker {
    int chromosome = 0, position = 0;
    double negLog10 = 0.0;
};

// A table of markers that are in order; `lines` says where each is in its file.
ScanTable tableOf(const std::vector<Marker>& markers, const std::vector<qint64>& lines) {
    ScanTable table;
    for (const qint64 line : lines)
        table.lines.append(line);
    for (const Marker& marker : markers) {
        const auto row = static_cast<size_t>(table.points.positions.size());
        const QByteArray name = QByteArray::number(marker.chromosome);
        if (table.chromosomes.isEmpty() || table.chromosomes.last().name != name)
            table.chromosomes.append({name, row, row});
        table.chromosomes.last().end = row + 1;
        table.points.positions.append(marker.position);
        table.points.values.append(std::min(marker.negLog10, 323.306));
        if (marker.negLog10 > 308.0)
            table.belowNormal.insert(row, marker.negLog10);
    }
    return table;
}

std::vector<qint64> inOrder(size_t count) {
    std::vector<qint64> lines(count);
    std::iota(lines.begin(), lines.end(), 2);
    return lines;
}

QByteArray described(const ScanTable& table, const LeadMarker& lead) {
    QByteArrayList parts{table.chromosomes[lead.chromosome].name + ':' +
                         QByteArray::number(table.position(lead.row))};
    for (const qint64 number :
         {lead.hits, qint64{lead.firstHit}, qint64{lead.lastHit}, lead.nearby})
        parts += QByteArray::number(number);
    parts += lead.neighbor ? QByteArray::number(table.negLog10(*lead.neighbor)) + '@' +
                                 QByteArray::number(table.lines[*lead.neighbor])
                           : QByteArray("none");
    return parts.join(' ') + (lead.isLone ? " lone" : "");
}

QByteArrayList described(const ScanTable& table, const std::vector<LeadMarker>& leads) {
    QByteArrayList texts;
    for (const LeadMarker& lead : leads)
        texts += described(table, lead);
    return texts;
}

} // namespace

Q_DECLARE_METATYPE(std::vector<Marker>)

void LeadMarkers::leads_data() {
    QTest::addColumn<std::vector<Marker>>("markers");
    QTest::addColumn<double>("threshold");
    QTest::addColumn<QByteArrayList>("expected");
    const auto row = [](const char* name, const std::vector<Marker>& markers, double threshold,
                        const QByteArrayList& expected) {
        QTest::newRow(name) << markers << threshold << expected;
    };
    row("none", {}, 7.3, {});
    row("none below", {{1, 10, 7.0}}, 7.3, {});
    row("at the threshold", {{1, 10, 8.0}}, 8.0, {});
    row("alone", {{1, 10, 8.0}}, 7.3, {"1:10 1 10 10 1 none lone"});
    row("a window apart", {{1, 10, 8.0}, {1, 500'010, 9.0}}, 7.3,
        {"1:10 1 10 10 1 none lone", "1:500010 1 500010 500010 1 none lone"});
    row("less than a window apart", {{1, 11, 8.0}, {1, 500'010, 9.0}}, 7.3,
        {"1:500010 2 11 500010 1 none lone"});
    row("same place on two chromosomes", {{1, 10, 8.0}, {2, 10, 9.0}}, 7.3,
        {"1:10 1 10 10 1 none lone", "2:10 1 10 10 1 none lone"});
    row("the first of equals", {{1, 10, 8.0}, {1, 20, 8.0}}, 7.3, {"1:10 2 10 20 2 8@3"});
    row("several at a place", {{1, 10, 8.0}, {1, 10, 9.0}, {1, 10, 8.5}}, 7.3,
        {"1:10 3 10 10 3 8.5@4"});
    row("half is enough", {{1, 10, 8.0}, {1, 250'010, 4.0}}, 7.3, {"1:10 1 10 10 2 4@3"});
    row("less than half", {{1, 10, 8.0}, {1, 250'010, 3.999}}, 7.3,
        {"1:10 1 10 10 2 3.999@3 lone"});
    row("beyond reach", {{1, 10, 8.0}, {1, 250'011, 4.0}}, 7.3, {"1:10 1 10 10 1 none lone"});
    row("a chain", {{1, 1, 9.0}, {1, 400'001, 10.0}, {1, 800'001, 9.5}, {1, 1'200'001, 8.0}}, 7.3,
        {"1:400001 3 1 800001 1 none lone", "1:1200001 1 1200001 1200001 1 none lone"});
    row("between two: the stronger", {{1, 1, 9.0}, {1, 300'001, 8.0}, {1, 600'001, 10.0}}, 7.3,
        {"1:1 1 1 1 1 none lone", "1:600001 2 300001 600001 1 none lone"});
    row("beyond doubles", {{1, 10, 400.0}, {1, 20, 500.0}, {1, 30, 323.2}, {1, 40, 100.0}}, 323.25,
        {"1:20 2 10 20 4 400@2"});
    row("at the ends of the range", {{1, 1, 9.0}, {1, 2'147'483'647, 9.0}}, 7.3,
        {"1:1 1 1 1 1 none lone", "1:2147483647 1 2147483647 2147483647 1 none lone"});
}

void LeadMarkers::leads() {
    QFETCH(std::vector<Marker>, markers);
    QFETCH(double, threshold);
    const ScanTable table = tableOf(markers, inOrder(markers.size()));
    LeadRule rule;
    rule.negLog10 = threshold;
    QTEST(described(table, leadMarkers(table, rule)), "expected");
}

// Few different places and strengths, so that many are equal.
void LeadMarkers::agreesWithThePlainWay() {
    Random random(runSeed());
    for (int i = 0; i < randomCases(3'000); ++i) {
        std::vector<Marker> markers(static_cast<size_t>(random.below(40)));
        const int step = random.oneOf({1'000, 50'000, 125'000, 1'000'000});
        for (Marker& marker : markers)
            marker = {random.between(1, 3), step * random.between(1, 30),
                      random.oneIn(8) ? 300.0 + 10.0 * random.below(6) : 0.5 * random.below(30)};
        std::stable_sort(markers.begin(), markers.end(), [](const Marker& a, const Marker& b) {
            return std::pair(a.chromosome, a.position) < std::pair(b.chromosome, b.position);
        });
        std::vector<qint64> lines = inOrder(markers.size());
        for (size_t line = lines.size(); line > 1; --line)
            std::swap(lines[line - 1], lines[static_cast<size_t>(random.below(int(line)))]);
        const ScanTable table = tableOf(markers, lines);
        LeadRule rule;
        rule.negLog10 = random.oneOf({0.0, 4.0, 7.3, 310.0, 340.0});
        rule.window = random.oneOf({1, step, 2 * step, 5 * step, 500'000});
        QCOMPARE(described(table, leadMarkers(table, rule)),
                 described(table, plain::leadMarkers(table, rule)));
    }
}

QTEST_APPLESS_MAIN(LeadMarkers)
#include "tst_lead_markers.moc"

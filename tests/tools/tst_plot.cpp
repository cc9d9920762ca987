#include "driven_run.h"
#include "samples.h"
#include "tools_run.h"

#include <QFileInfo>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <cmath>

// The pictures that pelmark-tools draws without a window: against those that the window saves, as
// documents, and what it says where it draws none.
class PlotCommand : public QObject {
    Q_OBJECT

private slots:
    void genomeIsTheWindows_data();
    void genomeIsTheWindows();
    void chromosomeIsTheWindows_data();
    void chromosomeIsTheWindows();
    void pickedChromosomeIsTheWindows();
    void chromosomesAreThoseOfFilesOfTheirOwn();
    void zoomIsTheWindows();
    void preparedFileIsTheWindows();
    void titleIsCutAsInTheWindow();
    void readsWhatPrepareReads();
    void needsNothingAround_data();
    void needsNothingAround();
    void fonts_data();
    void fonts();
    void scaleMultipliesEverything();
    void pdfHasLettersAndOnePicture();
    void pdfShowsThePng();
    void sameBytesEachTime_data();
    void sameBytesEachTime();
    void quantiles();
    void hitsAreNamed();
    void hitsAreNamedInARange();
    void namesKeepOffDots();
    void theStrongestIsNamedUnderTheTitle();
    void several();
    void reports();
    void reportsQuantiles();
    void wrongCalls_data();
    void wrongCalls();
    void faultsNameTheLine_data();
    void faultsNameTheLine();
    void proposedCommandsWork();
    void emptyRangeIsDrawn();
    void outputs_data();
    void outputs();
};

namespace {

constexpr int patience = 60'000; // ms
const QSize usualScreen(1920, 1080);

QString example(const QString& name) {
    return QStringLiteral(PELMARK_EXAMPLES "/") + name;
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString sizeText(QSize size) {
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

// Draws and returns the picture; null, with a message, where that failed or anything was said.
QImage drawn(const ToolsRun& run, const QStringList& words) {
    const ToolsRun::Result result =
        run.run(QStringList{"plot"} + words + QStringList{"-q", "-o", "tool.png"});
    if (result.status != 0 || !result.error.isEmpty() || !result.out.isEmpty())
        qWarning("status %d: %s", result.status, result.error.constData());
    else
        return QImage(run.path("tool.png"));
    return {};
}

// Runs another program and returns what it prints.
QByteArray output(const QString& program, const QStringList& words) {
    QProcess process;
    process.start(program, words);
    if (!process.waitForFinished(patience) || process.exitCode() != 0)
        qWarning("%s: %s", qPrintable(program), process.readAllStandardError().constData());
    return process.readAllStandardOutput();
}

QImage pageOf(const ToolsRun& run, const QString& pdf, int dotsPerInch) {
    output("pdftoppm", {"-png", "-singlefile", "-r", QString::number(dotsPerInch), run.path(pdf),
                        run.path("page")});
    return QImage(run.path("page.png"));
}

// The pixels that dots of one chromosome have.
int inkOf(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, y) == 0xff3232ff ? 1 : 0;
    return count;
}

const char* const table = "CHR\tBP\tP\n1\t100\t0.5\n1\t2000\t0.1\n2\t100\t1e-9\n2\t700\t0.2\n";

// Of one chromosome; no letter lies on a dot.
const char* const fourMarkers =
    "CHR\tBP\tP\n1\t100\t0.01\n1\t300\t0.5\n1\t700\t1e-9\n1\t900\t1e-4\n";

} // namespace

void PlotCommand::genomeIsTheWindows_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QSize>("screen");
    for (const QSize screen : {usualScreen, QSize(1366, 768), QSize(643, 481)})
        for (const char* file : {"genome_100k.txt", "small.txt"})
            QTest::addRow("%s, %d", file, screen.width()) << file << screen;
}

void PlotCommand::genomeIsTheWindows() {
    QFETCH(QString, file);
    QFETCH(QSize, screen);
    DrivenRun window;
    window.setScreen(screen);
    window.addCopy(file, example(file));
    QVERIFY(window.playTo(0, {"open " + file, "click saveButton", "click exitButton"}));
    const QImage expected = window.image(file + ".png");
    QCOMPARE(expected.width(), static_cast<int>(0.8 * screen.width()));
    const ToolsRun run;
    for (const QStringList& way : {QStringList{}, QStringList{"--as-is"}})
        QCOMPARE(drawn(run, QStringList{example(file), "--screen", sizeText(screen)} + way),
                 expected);
}

void PlotCommand::chromosomeIsTheWindows_data() {
    QTest::addColumn<QStringList>("commands");
    QTest::addColumn<QStringList>("words");
    const QString redraw = "click checkBox1";
    QTest::newRow("dots") << QStringList{} << QStringList{};
    QTest::newRow("joined") << QStringList{redraw} << QStringList{"--join"};
    QTest::newRow("no lines") << QStringList{"click checkBox2"} << QStringList{"--no-lines"};
    QTest::newRow("marked") << QStringList{"type rangeStartEdit 700000-800000", redraw, redraw}
                            << QStringList{"--mark", "700,000-800,000"};
    QTest::newRow("all") << QStringList{"type rangeStartEdit 700000-800000", redraw,
                                        "click checkBox2"}
                         << QStringList{"--mark", "700000-800000", "--join", "--no-lines"};
}

void PlotCommand::chromosomeIsTheWindows() {
    QFETCH(QStringList, commands);
    QFETCH(QStringList, words);
    DrivenRun window;
    window.setScreen(usualScreen);
    window.addCopy("data.txt", example("chromosome1.txt"));
    QVERIFY(window.playTo(0, QStringList{"open data.txt"} + commands +
                                 QStringList{"click saveButton", "name t", "click exitButton"}));
    const ToolsRun run;
    for (const QStringList& way :
         {QStringList{}, QStringList{"--as-is"}, QStringList{"--chromosome", "1"}})
        QCOMPARE(drawn(run, QStringList{example("chromosome1.txt")} + words + way),
                 window.image("t.png"));
}

void PlotCommand::pickedChromosomeIsTheWindows() {
    DrivenRun window;
    window.setScreen(usualScreen);
    window.addFile("data.txt", samples::genomeTable());
    QVERIFY(window.playTo(0, {"open data.txt", "dump genome", "click exitButton"}));
    const State genome = window.state("genome");
    // The middle of the second chromosome, by the window's own scale.
    const double middle = (32 + 42) / 2.0;
    const int x = static_cast<int>(genome.number("pixPerX") * (middle - genome.integer("minX")));
    QVERIFY(window.playTo(0, {"open data.txt",
                              QStringLiteral("box %1 100 %2 200").arg(x - 2).arg(x + 2),
                              "click saveButton", "name t", "click exitButton"}));
    const ToolsRun run;
    run.write("data.txt", samples::genomeTable());
    for (const QStringList& way : {QStringList{}, QStringList{"--as-is"}})
        QCOMPARE(drawn(run, QStringList{"data.txt", "--chromosome", "B"} + way),
                 window.image("t.png"));
}

void PlotCommand::chromosomesAreThoseOfFilesOfTheirOwn() {
    const ToolsRun all, alone;
    const QByteArray rows[] = {"1\t10\t0.1\n1\t20\t0.2\n1\t70\t0.01\n", "2\t5\t0.3\n2\t90\t0.001\n",
                               "3\t7\t0.5\n3\t30\t0.02\n3\t40\t0.1\n3\t41\t0.05\n"};
    all.write("data.txt", "chr\tpos\tp\n" + rows[0] + rows[1] + rows[2]);
    for (int i = 0; i < 3; ++i) {
        alone.write("data.txt", "chr\tpos\tp\n" + rows[i]);
        QCOMPARE(drawn(all, {"data.txt", "--chromosome", QString::number(i + 1)}),
                 drawn(alone, {"data.txt"}));
    }
}

// A box from the top to the bottom takes the markers of a range.
void PlotCommand::zoomIsTheWindows() {
    DrivenRun window;
    window.setScreen(usualScreen);
    window.addCopy("data.txt", example("chromosome1.txt"));
    QVERIFY(window.playTo(0, {"open data.txt", "box 300 0 900 2000", "dump zoomed",
                              "click saveButton", "name t", "click exitButton"}));
    const QList<int> positions = window.state("zoomed").integers("Pos_list");
    QVERIFY(positions.size() > 10);
    const QString range =
        QStringLiteral("%1-%2").arg(positions.constFirst()).arg(positions.constLast());
    const ToolsRun run;
    for (const QStringList& way : {QStringList{}, QStringList{"--as-is"}})
        QCOMPARE(drawn(run, QStringList{example("chromosome1.txt"), "--range", range} + way),
                 window.image("t.png"));
}

// Rows in any order, p in any form: what prepare writes is what is drawn.
void PlotCommand::preparedFileIsTheWindows() {
    QByteArray text = "SNPID\tCHR\tGENPOS\tLOG10P\n";
    for (int i = 0; i < 3000; ++i)
        text += "rs" + QByteArray::number(i) + "\t" + QByteArray::number(1 + i * 7 % 5) + '\t' +
                QByteArray::number(1 + i * 7919LL % 3000 * 60'000) + '\t' +
                QByteArray::number(i == 77 ? 400.25 : i % 83 / 9.0) + '\n';
    const ToolsRun run;
    run.write("scan.regenie", text);
    QCOMPARE(run.run({"prepare", "scan.regenie", "-q", "-o", "scan.regenie.txt"}).status, 0);
    DrivenRun window;
    window.setScreen(usualScreen);
    window.addFile("scan.regenie.txt", run.read("scan.regenie.txt"));
    QVERIFY(window.playTo(0, {"open scan.regenie.txt", "click saveButton", "click exitButton"}));
    const QImage expected = window.image("scan.regenie.txt.png");
    QCOMPARE(drawn(run, {"scan.regenie.txt"}), expected);
    QCOMPARE(drawn(run, {"scan.regenie.txt", "--as-is"}), expected);
    // Only the title has the other name.
    const QRect belowTitle(0, 20, expected.width(), expected.height() - 20);
    QCOMPARE(drawn(run, {"scan.regenie"}).copy(belowTitle), expected.copy(belowTitle));
}

void PlotCommand::titleIsCutAsInTheWindow() {
    const QString name = QString(28, u'n') + QChar(0xe4) + QChar(0xe4) + ".txt";
    DrivenRun window;
    window.setScreen(usualScreen);
    window.addFile(name, samples::genomeTable());
    QVERIFY(window.playTo(0, {"open " + name, "dump a", "grab saved.png", "click exitButton"}));
    const ToolsRun run;
    run.write(name, samples::genomeTable());
    QCOMPARE(drawn(run, {name}), window.image("saved.png"));
}

void PlotCommand::readsWhatPrepareReads() {
    const ToolsRun run;
    run.write("x.txt", "a b Chrom Pos pvalue other\n1 1 1 100 0.5 1\n1 1 1 200 1e-5 1\n"
                       "1 1 1 300 NA 1\n");
    const ToolsRun::Result result = run.run({"plot", "x.txt", "-o", "x.png"});
    QCOMPARE(result.status, 0);
    QVERIFY2(result.error.contains("x.txt: 3 rows: 2 read, 1 dropped\n"), result.error);
    QVERIFY2(result.error.contains("p: \"pvalue\" (column 5)"), result.error);
    QVERIFY2(result.error.endsWith("x.png: chromosome 1, markers: 2\n"), result.error);
    run.write("p", run.read("x.txt"));
    const QImage expected = drawn(run, {"p"});
    QVERIFY(!expected.isNull());
    QCOMPARE(run.run({"plot", "-", "-q", "-o", "pipe.png"}, run.read("x.txt")).status, 0);
    const QRect belowTitle(0, 20, expected.width(), expected.height() - 20);
    QCOMPARE(QImage(run.path("pipe.png")).copy(belowTitle), expected.copy(belowTitle));
}

void PlotCommand::needsNothingAround_data() {
    QTest::addColumn<QStringList>("variables");
    QTest::newRow("nothing") << QStringList{};
    QTest::newRow("no home") << QStringList{"HOME=/nonexistent", "LC_ALL=C"};
    QTest::newRow("a display that is gone")
        << QStringList{"DISPLAY=:77", "WAYLAND_DISPLAY=gone", "QT_QPA_PLATFORM=xcb",
                       "XDG_RUNTIME_DIR=/nonexistent"};
    QTest::newRow("scales and styles")
        << QStringList{"QT_SCALE_FACTOR=2", "QT_FONT_DPI=144", "QT_QPA_PLATFORMTHEME=gtk3"};
}

// The same picture as elsewhere, without a word, and nothing is left in any folder.
void PlotCommand::needsNothingAround() {
    QFETCH(QStringList, variables);
    const ToolsRun run;
    run.write("in.txt", table);
    const QImage expected = drawn(run, {"in.txt"});
    QVERIFY(!expected.isNull());
    QVERIFY(QDir(run.path(".")).mkdir("temporary"));
    QProcess process;
    process.setWorkingDirectory(run.path("."));
    process.setProcessEnvironment(QProcessEnvironment(QProcessEnvironment::InheritFromParent));
    process.start("env",
                  QStringList{"-i", "TMPDIR=" + run.path("temporary")} + variables +
                      QStringList{ToolsRun::program(), "plot", "in.txt", "-o", "bare.png", "-q"});
    QVERIFY(process.waitForFinished(patience));
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(QImage(run.path("bare.png")), expected);
    QCOMPARE(run.files(), QStringList({"bare.png", "in.txt", "temporary", "tool.png"}));
    QVERIFY(QDir(run.path("temporary")).isEmpty());
}

void PlotCommand::fonts_data() {
    QTest::addColumn<QString>("folder");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("others") << "/usr/share/fonts/truetype/dejavu" << 0
                            << QByteArray("neither Calibri nor Carlito is installed");
    QTest::newRow("none") << "/nonexistent" << 4 << QByteArray("this machine has no fonts");
    QTest::newRow("the usual") << "/usr/share/fonts" << 0 << QByteArray();
}

// Also without a cache of fonts that can be written.
void PlotCommand::fonts() {
    QFETCH(QString, folder);
    QFETCH(int, status);
    QFETCH(QByteArray, message);
    const ToolsRun run;
    run.write("in.txt", table);
    run.write("fonts.conf", "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">"
                            "<fontconfig><dir>" +
                                folder.toUtf8() +
                                "</dir><cachedir prefix=\"xdg\">cache</cachedir></fontconfig>");
    QProcess process;
    process.setWorkingDirectory(run.path("."));
    process.start("env", {"-i", "HOME=/nonexistent", "FONTCONFIG_FILE=" + run.path("fonts.conf"),
                          ToolsRun::program(), "plot", "in.txt", "-q", "-o", "x.png"});
    QVERIFY(process.waitForFinished(patience));
    const QByteArray error = process.readAllStandardError();
    QVERIFY2(process.exitCode() == status, error);
    QVERIFY2(message.isEmpty() ? error.isEmpty() : error.contains(message), error);
    QVERIFY2(error.count('\n') == (message.isEmpty() ? 0 : 1), error);
    QCOMPARE(QFileInfo::exists(run.path("x.png")), status == 0);
}

void PlotCommand::scaleMultipliesEverything() {
    const ToolsRun run;
    run.write("in.txt", fourMarkers);
    const QStringList words{"in.txt", "--size", "300x200", "--no-lines"};
    const QImage once = drawn(run, words);
    const QImage thrice = drawn(run, words + QStringList{"--scale", "3"});
    QCOMPARE(once.size(), QSize(300, 200));
    QCOMPARE(thrice.size(), QSize(900, 600));
    QCOMPARE(thrice.dotsPerMeterX(), 3 * once.dotsPerMeterX());
    QCOMPARE(inkOf(once), 4 * 16);
    QCOMPARE(inkOf(thrice), 9 * inkOf(once));
    for (int y = 0; y < once.height(); ++y)
        for (int x = 0; x < once.width(); ++x)
            if (once.pixel(x, y) == 0xff3232ff)
                QVERIFY(inkOf(thrice.copy(3 * x - 3, 3 * y - 3, 9, 9)) > 0);
    // And letters three times as large.
    const auto titleWidth = [](const QImage& image, int height) {
        int first = image.width(), last = 0;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixel(x, y) != 0xffffffff) {
                    first = std::min(first, x);
                    last = std::max(last, x);
                }
        return last - first;
    };
    QVERIFY(std::abs(titleWidth(thrice, 60) - 3 * titleWidth(once, 20)) < 30);
}

void PlotCommand::pdfHasLettersAndOnePicture() {
    const ToolsRun run;
    QCOMPARE(run.run({"plot", example("genome_100k.txt"), "-q", "-o", "g.pdf"}).status, 0);
    const QString pdf = run.path("g.pdf");
    const QByteArray text = output("pdftotext", {"-layout", pdf, "-"});
    QVERIFY2(text.contains("genome_100k.txt, max(-logP)=38.3161"), text);
    QVERIFY2(text.contains("7.3"), text);
    const QList<QByteArray> images = output("pdfimages", {"-list", pdf}).trimmed().split('\n');
    QCOMPARE(images.size(), 4); // a title, a line, the picture and which of its pixels show
    QVERIFY2(images[2].simplified().startsWith("1 0 image 6144 3240 rgb 3 8 image"), images[2]);
    QVERIFY2(images[3].simplified().startsWith("1 1 mask 6144 3240"), images[3]);
    const QByteArray about = output("pdfinfo", {pdf});
    QVERIFY2(about.contains("Page size:       1152 x 608 pts"), about);
    QVERIFY2(!about.contains("CreationDate") && !contentOf(pdf).contains("(D:"), about);
    QVERIFY(QFileInfo(pdf).size() < 1'000'000);
}

// The picture in a PDF has exactly the dots of a PNG at its scale, and lies where they lie there.
void PlotCommand::pdfShowsThePng() {
    const ToolsRun run;
    run.write("in.txt", fourMarkers);
    const QStringList words{"in.txt", "--size", "300x200", "--no-lines"};
    const QImage png = drawn(run, words + QStringList{"--scale", "4"});
    QCOMPARE(inkOf(png), 4 * 16 * 16);
    QCOMPARE(run.run(QStringList{"plot"} + words + QStringList{"-q", "-o", "x.pdf"}).status, 0);
    output("pdfimages", {"-png", run.path("x.pdf"), run.path("dots")});
    const QImage dots(run.path("dots-000.png")), page = pageOf(run, "x.pdf", 4 * 96);
    QCOMPARE(dots.size(), png.size());
    QCOMPARE(page.size(), png.size());
    QCOMPARE(inkOf(dots), inkOf(png));
    for (int y = 0; y < png.height(); ++y)
        for (int x = 0; x < png.width(); ++x)
            if (png.pixel(x, y) == 0xff3232ff) {
                QCOMPARE(dots.pixel(x, y), png.pixel(x, y));
                // Viewers may smooth the edges.
                if (inkOf(png.copy(x - 1, y - 1, 3, 3)) == 9)
                    QCOMPARE(page.pixel(x, y), png.pixel(x, y));
            }
}

void PlotCommand::sameBytesEachTime_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("PNG") << "x.png";
    QTest::newRow("PDF") << "x.pdf";
}

void PlotCommand::sameBytesEachTime() {
    QFETCH(QString, name);
    const ToolsRun run;
    run.write("in.txt", table);
    const QStringList words{"plot", "in.txt", "-q", "-o", name};
    QCOMPARE(run.run(words).status, 0);
    const QByteArray first = run.read(name);
    QVERIFY(first.size() > 1000);
    for (int i = 0; i < 8; ++i) {
        QCOMPARE(run.run(words).status, 0);
        QCOMPARE(run.read(name), first);
    }
}

// Of p-values that are exactly as expected: on the diagonal, with a lambda of 1.
void PlotCommand::quantiles() {
    constexpr int count = 999;
    QByteArray text = "CHR\tBP\tP\n";
    for (int i = 1; i <= count; ++i)
        text += "1\t" + QByteArray::number(i * 389 % 1000 * 100) + '\t' +
                QByteArray::number((i * 389 % 1000) / (count + 1.0), 'g', 17) + '\n';
    const ToolsRun run;
    run.write("in.txt", text);
    QCOMPARE(run.run({"plot", "in.txt", "--qq", "-q", "-o", "qq.pdf"}).status, 0);
    const QByteArray words = output("pdftotext", {"-layout", run.path("qq.pdf"), "-"});
    QVERIFY2(words.contains("in.txt, \xce\xbb = 1.000, 999 markers"), words);
    QVERIFY2(words.contains("Expected") && words.contains("Observed"), words);
    const QImage image = drawn(run, {"in.txt", "--qq"});
    QCOMPARE(image.size(), QSize(810, 810));
    // The dots lie on a straight line from the axes' corner: each column's lie in one place.
    QPointF first, last;
    for (int x = 0; x < image.width(); ++x)
        for (int y = 0; y < image.height(); ++y)
            if (image.pixel(x, y) == 0xff3232ff) {
                if (first.isNull())
                    first = QPointF(x, y);
                last = QPointF(x, y);
            }
    QVERIFY(last.x() > first.x() + 500 && last.y() < first.y() - 300);
    for (int x = 0; x < image.width(); ++x)
        for (int y = 0; y < image.height(); ++y)
            if (image.pixel(x, y) == 0xff3232ff) {
                const double share = (x - first.x()) / (last.x() - first.x());
                const double line = first.y() + share * (last.y() - first.y());
                QVERIFY2(std::abs(y - line) < 8, qPrintable(QString::number(x)));
            }
}

// Each of the strongest ones once, on the page, and no words over others.
void PlotCommand::hitsAreNamed() {
    const ToolsRun run;
    const QString file = example("genome_100k.txt");
    QCOMPARE(run.run({"plot", "-q", "--label-hits", "40", file, "-o", "g.pdf"}).status, 0);
    const QString boxes = QString::fromUtf8(output("pdftotext", {"-bbox", run.path("g.pdf"), "-"}));
    const QRegularExpression word("<word xMin=\"([\\d.-]+)\" yMin=\"([\\d.-]+)\" "
                                  "xMax=\"([\\d.-]+)\" yMax=\"([\\d.-]+)\">([^<]*)<");
    QList<QRectF> places;
    QStringList names;
    for (auto it = word.globalMatch(boxes); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const auto number = [&](int i) { return match.captured(i).toDouble(); };
        // A little less high, since letters do not fill their line.
        const QRectF place(QPointF(number(1), number(2) + 2), QPointF(number(3), number(4) - 2));
        QVERIFY2(QRectF(0, 0, 1152, 608).contains(place), qPrintable(match.captured(5)));
        for (const QRectF& other : places)
            QVERIFY2(!other.intersects(place), qPrintable(match.captured(5)));
        places.append(place);
        if (match.captured(5).startsWith("rs"))
            names.append(match.captured(5));
    }
    QVERIFY2(names.size() >= 25 && names.size() <= 40, qPrintable(names.join(u' ')));
    // The strongest leads, by the other command.
    QStringList leads;
    const QByteArray hits = run.run({"hits", file, "-q"}).out;
    for (const QByteArray& line : hits.split('\n').mid(1))
        leads.append(line.split('\t').value(2));
    for (const QString& name : names)
        QVERIFY2(leads.count(name) == 1 && names.count(name) == 1, qPrintable(name));
    QVERIFY(names.contains("rs35848276"));
    // Without a number, the word after it is a file.
    QCOMPARE(run.run({"plot", "-q", "--label-hits", file, "-o", "x.png"}).status, 0);
    QVERIFY(QImage(run.path("x.png")) != drawn(run, {file}));
}

void PlotCommand::hitsAreNamedInARange() {
    const ToolsRun run;
    run.write("in.txt", "CHR\tBP\tP\n1\t100\t1e-9\n1\t900000\t1e-12\n1\t5000000\t0.1\n"
                        "1\t6000000\t1e-20\n1\t9000000\t1e-15\n2\t10\t1e-30\n");
    QCOMPARE(run.run({"plot", "-q", "in.txt", "--label-hits", "2", "--chromosome", "1", "--range",
                      "1-7000000", "-o", "x.pdf"})
                 .status,
             0);
    const QByteArray words = output("pdftotext", {"-layout", run.path("x.pdf"), "-"});
    QVERIFY2(words.contains("1:6000000") && words.contains("1:900000"), words);
    QVERIFY2(!words.contains("1:9000000") && !words.contains("1:100") && !words.contains("2:10"),
             words);
}

// Nothing is drawn over a dot, though the names stand in a tower of them.
void PlotCommand::namesKeepOffDots() {
    const ToolsRun run;
    const QStringList words{example("genome_100k.txt"), "--chromosome", "6"};
    const QImage bare = drawn(run, words), named = drawn(run, words + QStringList{"--label-hits"});
    QCOMPARE(named.size(), bare.size());
    QVERIFY(named != bare);
    int dots = 0;
    for (int x = 0; x < bare.width(); ++x)
        for (int y = 0; y < bare.height(); ++y)
            if (bare.pixel(x, y) == 0xff3232ff) {
                ++dots;
                QVERIFY2(named.pixel(x, y) == bare.pixel(x, y),
                         qPrintable(QStringLiteral("%1, %2").arg(x).arg(y)));
            }
    QVERIFY(dots > 10000);
}

void PlotCommand::theStrongestIsNamedUnderTheTitle() {
    const ToolsRun run;
    QCOMPARE(run.run({"plot", "-q", example("genome_100k.txt"), "--label-hits", "40", "--size",
                      "700x400", "-o", "x.pdf"})
                 .status,
             0);
    const QByteArray words = output("pdftotext", {"-layout", run.path("x.pdf"), "-"});
    QVERIFY2(words.contains("rs35848276"), words);
}

void PlotCommand::several() {
    const ToolsRun run;
    QVERIFY(QDir(run.path(".")).mkdir("out"));
    run.write("a.txt", table);
    run.write("b.txt", "CHR\tBP\tQ\n1\t2\t3\n");
    run.write("c.txt", table);
    const ToolsRun::Result result =
        run.run({"plot", "a.txt", "b.txt", "missing.txt", "c.txt", "-q", "-o", "out"});
    QCOMPARE(result.status, 5);
    QVERIFY2(result.error.contains("pelmark-tools: b.txt:1: "), result.error);
    QVERIFY2(result.error.contains("pelmark-tools: missing.txt: cannot be read"), result.error);
    QCOMPARE(QDir(run.path("out")).entryList(QDir::Files | QDir::Hidden),
             QStringList({"a.txt.png", "c.txt.png"}));
    QCOMPARE(QImage(run.path("out/a.txt.png")), drawn(run, {"a.txt"}));
    QCOMPARE(run.run({"plot", "a.txt", "c.txt", "--format", "pdf", "-q", "-o", "out/"}).status, 0);
    QVERIFY(run.read("out/c.txt.pdf").startsWith("%PDF"));
}

void PlotCommand::reports() {
    const ToolsRun run;
    QVERIFY(QDir(run.path(".")).mkdir("out"));
    run.write("a.txt", "CHR\tBP\tSNP\tP\n1\t10\trs1\t1e-9\n1\t20\trs2\tNA\n2\t30\trs3\t0.5\n");
    const ToolsRun::Result result =
        run.run({"plot", "a.txt", "missing.txt", "-q", "-o", "out", "--label-hits", "--json", "-"});
    QCOMPARE(result.status, 3);
    const QJsonObject json = QJsonDocument::fromJson(result.out).object();
    QCOMPARE(json["version"].toInt(), 1);
    QCOMPARE(json["command"].toString(), "plot");
    QCOMPARE(json["failed"].toArray(), QJsonArray{"missing.txt"});
    QCOMPARE(json["pictures"].toArray().size(), 1);
    const QJsonObject picture = json["pictures"][0].toObject();
    QCOMPARE(picture["input"].toString(), "a.txt");
    QCOMPARE(picture["output"].toString(), "out/a.txt.png");
    QCOMPARE(picture["what"].toString(), "whole genome");
    QCOMPARE(picture["markers_drawn"].toInt(), 2);
    QCOMPARE(picture["labels"].toArray(), QJsonArray{"rs1"});
    QVERIFY(!picture.contains("lambda"));
    const QJsonObject reading = picture["reading"].toObject();
    QCOMPARE(reading["rows"].toInt(), 3);
    QCOMPARE(reading["markers"].toInt(), 2);
    QCOMPARE(reading["dropped"]["p-missing"]["count"].toInt(), 1);
    QCOMPARE(reading["columns"].toArray().size(), 4);
    QVERIFY(!reading.contains("output"));

    QCOMPARE(run.run({"plot", "a.txt", "-q", "-o", "x.png", "--json", "x.png"}).status, 2);
    QCOMPARE(run.run({"plot", "a.txt", "-q", "-o", "x.png", "--json", "a.txt"}).status, 2);
    QCOMPARE(run.run({"plot", "a.txt", "-q", "-o", "x.png", "--json", "none/j"}).status, 4);
    QVERIFY(!run.files().contains("x.png"));
}

void PlotCommand::reportsQuantiles() {
    const ToolsRun run;
    run.write("a.txt", "CHR POS P\n1 1 0.25\n1 2 0.5\n1 3 0.75\n");
    QCOMPARE(
        run.run({"plot", "a.txt", "-q", "-o", "x.png", "--qq", "--as-is", "--json", "j"}).status,
        0);
    const QJsonObject picture =
        QJsonDocument::fromJson(run.read("j")).object()["pictures"][0].toObject();
    QCOMPARE(picture["lambda"].toDouble(), 1.0);
    QVERIFY(!picture.contains("reading"));
}

void PlotCommand::wrongCalls_data() {
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const char* words, const char* message) {
        QTest::newRow(words) << QString(words).split(u' ') << QByteArray(message);
    };
    row("in.txt", "Add -o and a file that ends in .png or .pdf");
    row("in.txt -o x.jpg", "ends in neither .png nor .pdf");
    row("in.txt in.txt -o x.png", "is no folder");
    row("in.txt in.txt -o out", "would be the picture of two files");
    row("in.txt -o x.png --range 5", "--range 5: write the first and the last position");
    row("in.txt -o x.png --mark 9-5", "the first position comes after the last one");
    row("in.txt -o x.png --screen 100", "--screen 100: write width and height");
    row("in.txt -o x.png --size 0x5", "the plot would have no pixels");
    row("in.txt -o x.png --size 5x5 --screen 5x5", "Give one of them");
    row("in.txt -o x.png --scale 0", "--scale 0: write a whole number");
    row("in.txt -o x.png --scale 50", "Choose a smaller --size, --screen or --scale");
    row("in.txt -o x.png --join", "has several chromosomes; --range, --mark and --join are for "
                                  "one. Choose it with --chromosome: 1, 2");
    row("in.txt -o x.png --chromosome 3", "has no chromosome \"3\". Choose one of: 1, 2");
    row("in.txt -o x.png --qq --join", "--qq draws no positions");
    row("in.txt -o x.png --label-hits 0", "--label-hits 0: write a whole number");
    row("in.txt -o x.png --as-is --label-hits", "Leave out --as-is");
    row("in.txt -o x.png --as-is --p P", "which knows no --p.");
    row("in.txt -o x.png --chromosome-column 9", "--chromosome-column");
}

void PlotCommand::wrongCalls() {
    QFETCH(QStringList, words);
    QFETCH(QByteArray, message);
    const ToolsRun run;
    run.write("in.txt", table);
    QVERIFY(QDir(run.path(".")).mkdir("out"));
    const ToolsRun::Result result = run.run(QStringList{"plot", "-q"} + words);
    QVERIFY2(result.status == 2, result.error);
    QVERIFY2(result.error.contains(message), result.error);
    QCOMPARE(run.files(), QStringList({"in.txt", "out"}));
}

void PlotCommand::faultsNameTheLine_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const char* title, const char* text, const char* message) {
        QTest::newRow(title) << QByteArray(text) << QByteArray(message);
    };
    row("no number", "chr\tpos\tp\n1\t5\t.\n", "in.txt:2: p is \".\", which is no number. ");
    row("no position", "chr\tpos\tp\n1\tx\t.1\n", "in.txt:2: pos is \"x\", which is no whole");
    row("titles", "chr\tbp\tp\n1\t5\t.1\n", "in.txt:1: no titles that the window knows");
    row("short line", "chr\tpos\tp\n1\t5\n", "in.txt:2: the line ends before column p. ");
    row("two columns", "chr\tpos\n1\t5\n", "in.txt:1: there are fewer than three columns");
    row("no delimiter", "chrpos\n", "in.txt:1: there is no tab, space or comma");
    row("one marker", "chr\tpos\tp\n1\t5\t.1\n", "in.txt: there are fewer than two markers");
}

void PlotCommand::faultsNameTheLine() {
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, message);
    const ToolsRun run;
    run.write("in.txt", text);
    const ToolsRun::Result result = run.run({"plot", "in.txt", "--as-is", "-q", "-o", "x.png"});
    QCOMPARE(result.status, 5);
    QVERIFY2(result.error.contains(message), result.error);
    QCOMPARE(run.files(), QStringList{"in.txt"});
}

// --chromosome says which one is drawn, so proposals name the column's option otherwise.
void PlotCommand::proposedCommandsWork() {
    const ToolsRun run;
    run.write("two.txt", "chr\tpos\tp_EUR\tp_AFR\n1\t100\t0.2\t0.3\n1\t200\t0.25\t0.35\n");
    const ToolsRun::Result result =
        run.run({"plot", "two.txt", "--chromosome", "1", "-o", "x.png"});
    QCOMPARE(result.status, 5);
    const QByteArray proposal = "pelmark-tools plot two.txt --chromosome 1 -o x.png --p p_EUR\n";
    QVERIFY2(result.error.contains(proposal), result.error);
    QCOMPARE(
        run.run({"plot", "two.txt", "--chromosome", "1", "-o", "x.png", "--p", "p_EUR"}).status, 0);
    run.write("names.txt", "here\tpos\tp\n1\t100\t0.2\n1\t200\t0.25\n");
    const ToolsRun::Result second = run.run({"plot", "names.txt", "-o", "x.png"});
    QCOMPARE(second.status, 5);
    QVERIFY2(second.error.contains("-o x.png --chromosome-column COLUMN\n"), second.error);
    QVERIFY2(!QString(second.error).contains(QRegularExpression("--chromosome(?![-\\w])")),
             second.error);
    QCOMPARE(run.run({"plot", "names.txt", "-o", "x.png", "--chromosome-column", "here"}).status,
             0);
}

void PlotCommand::emptyRangeIsDrawn() {
    const ToolsRun run;
    run.write("in.txt", table);
    const ToolsRun::Result result = run.run(
        {"plot", "in.txt", "--chromosome", "1", "--range", "101-1999", "-q", "-o", "x.png"});
    QCOMPARE(result.status, 0);
    QVERIFY2(result.error.contains("there is none in chromosome 1:101-1999"), result.error);
    QCOMPARE(inkOf(QImage(run.path("x.png"))), 0);
}

void PlotCommand::outputs_data() {
    QTest::addColumn<QString>("out");
    QTest::addColumn<int>("status");
    QTest::newRow("no such folder") << "none/x.png" << 4;
    QTest::newRow("an input") << "in.png" << 2;
    QTest::newRow("a full device") << "full.png" << 4;
}

void PlotCommand::outputs() {
    QFETCH(QString, out);
    QFETCH(int, status);
    const ToolsRun run;
    run.write("in.png", table);
    QVERIFY(QFile::link("/dev/full", run.path("full.png")));
    const ToolsRun::Result result = run.run({"plot", "in.png", "-q", "-o", out});
    QCOMPARE(result.status, status);
    QVERIFY2(result.error.contains(out.toUtf8() + ": "), result.error);
    QCOMPARE(run.read("in.png"), QByteArray(table));
    QCOMPARE(run.files(), QStringList({"full.png", "in.png"}));
}

QTEST_GUILESS_MAIN(PlotCommand)
#include "tst_plot.moc"

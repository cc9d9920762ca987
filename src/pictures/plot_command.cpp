#include "plot_command.h"

#include "file_writing.h"
#include "picture_names.h"
#include "pictures.h"
#include "plot_arguments.h"
#include "plot_words.h"
#include "prepare_words.h"
#include "safe_output.h"
#include "scan_command.h"
#include "screenless.h"

#include <QJsonDocument>
#include <QRegularExpression>
#include <algorithm>
#include <list>

namespace {

// The option for the chromosome's column has another name here than in other commands: --chromosome
// says which one is drawn.
Arguments columnArguments(Arguments arguments) {
    arguments.options.remove(QByteArrayLiteral("--chromosome"));
    if (const auto column = arguments.value("--chromosome-column"))
        arguments.options[QByteArrayLiteral("--chromosome")] = {*column};
    return arguments;
}

QString withColumnOption(QString text) {
    static const QRegularExpression option(QStringLiteral("--chromosome(?![\\w-])"));
    return text.replace(option, QStringLiteral("--chromosome-column"));
}

Refusal withColumnOption(Refusal refusal) {
    refusal.message = withColumnOption(refusal.message);
    for (QByteArray& each : refusal.options)
        each = withColumnOption(QString::fromUtf8(each)).toUtf8();
    return refusal;
}

class Plot {
public:
    Plot(const Arguments& arguments, Streams& streams)
        : m_arguments(arguments), m_columns(columnArguments(arguments)), m_streams(streams) {}

    int run();

private:
    struct Scan {
        Scan(const Arguments& arguments, Streams& streams) : command("plot", arguments, streams) {}

        ScanCommand command;
        int status = StatusFine;
    };
    void openInputs();
    std::optional<Failure> openReport();
    int draw(Scan& scan, const QByteArray& path);
    std::variant<PlotData, int> read(Scan& scan, DrawnPicture& drawn);
    std::optional<Failure> startDrawing();
    std::optional<Failure> write(const PlotData& data, DrawnPicture& drawn, SafeOutput& output);
    std::optional<Failure> writeReport();
    bool isQuiet() const { return m_arguments.has("--quiet"); }

    const Arguments& m_arguments;
    const Arguments m_columns;
    Streams& m_streams;
    PlotRequest m_request;
    PictureNames m_names;
    std::list<Scan> m_scans;
    Inputs m_everyInput; // no picture may replace one
    std::optional<Screenless> m_screenless;
    std::optional<SafeOutput> m_report; // for programs
    QJsonArray m_pictures;
    QStringList m_failed;
};

void Plot::openInputs() {
    for (const QByteArray& file : m_arguments.files) {
        Scan& scan = m_scans.emplace_back(m_columns, m_streams);
        scan.command.inputs().knowPipes(m_everyInput);
        if (const std::optional<Failure> failure = scan.command.readInputs({file}))
            scan.status = scan.command.end(*failure);
        m_everyInput.protect(scan.command.inputs());
    }
}

std::optional<Failure> Plot::openReport() {
    const auto path = m_arguments.value("--json");
    if (!path)
        return std::nullopt;
    for (const QByteArray& picture : std::as_const(m_names.paths))
        if (leadToOneFile(picture, *path))
            return Failure{StatusWrongCall,
                           QStringLiteral("--json %1: two outputs cannot share a file.")
                               .arg(QFile::decodeName(*path))};
    m_report.emplace(*path, "--json", true);
    return m_report->open(m_everyInput);
}

std::optional<Failure> Plot::writeReport() {
    if (!m_report)
        return std::nullopt;
    writeAll(m_report->file(), QJsonDocument(plotJson(m_pictures, m_failed)).toJson());
    return m_report->commit();
}

// The data, or the exit status where it was said what is wrong with them.
std::variant<PlotData, int> Plot::read(Scan& scan, DrawnPicture& drawn) {
    const QString &path = scan.command.inputs().paths()[0],
                  &name = scan.command.inputs().names()[0];
    std::variant<PlotData, Failure> data;
    if (m_request.asIs) {
        data = plotDataAsIs(path, name, m_request);
    } else {
        const std::variant<PrepareOptions, Failure> options = scan.command.readOptions();
        if (const auto* failure = std::get_if<Failure>(&options))
            return scan.command.end(*failure);
        auto table =
            readScanTable(path, std::get<PrepareOptions>(options), scan.command.progress());
        scan.command.clearProgress();
        if (const auto* refusal = std::get_if<Refusal>(&table))
            return scan.command.refuse(withColumnOption(*refusal));
        auto& read = std::get<ScanTable>(table);
        for (RoleNote& note : read.report.table.columns.notes)
            note.why = withColumnOption(note.why);
        drawn.reading = {{name}, {}, read.report, QStringLiteral("read")};
        if (!isQuiet())
            m_streams.error.write(textOf(*drawn.reading));
        QList<NamedRow> named;
        if (m_request.labelledHits > 0) {
            auto names = leadNames(path, read, m_request);
            if (const auto* refusal = std::get_if<Refusal>(&names))
                return scan.command.refuse(withColumnOption(*refusal));
            named = std::get<QList<NamedRow>>(std::move(names));
        }
        data = plotData(std::move(read), named, name, m_request);
    }
    if (const auto* failure = std::get_if<Failure>(&data))
        return scan.command.end(*failure);
    return std::get<PlotData>(std::move(data));
}

std::optional<Failure> Plot::startDrawing() {
    if (m_screenless)
        return m_screenless->failure();
    m_screenless.emplace();
    std::optional<Failure> failure = m_screenless->failure();
    const QString warning = m_screenless->warning();
    if (!failure && !warning.isEmpty())
        complain(m_streams, warning);
    return failure;
}

std::optional<Failure> Plot::write(const PlotData& data, DrawnPicture& drawn, SafeOutput& output) {
    if (std::optional<Failure> failure = startDrawing())
        return failure;
    const auto picture = pictureOf(data, drawn.input, m_request, m_names.format);
    if (const auto* failure = std::get_if<Failure>(&picture))
        return *failure;
    drawn.lambda = std::get<Picture>(picture).lambda;
    if (!writePicture(output.file(), m_names.format, std::get<Picture>(picture)))
        return Failure{StatusUnwritable,
                       drawn.output + QLatin1String(": cannot be written: ") +
                           (output.file().error() == QFile::NoError
                                ? QStringLiteral("there is not enough memory for a picture of "
                                                 "this size.")
                                : output.file().errorString())};
    return output.commit();
}

int Plot::draw(Scan& scan, const QByteArray& path) {
    SafeOutput output(path, "--output");
    if (const std::optional<Failure> failure = output.open(m_everyInput))
        return scan.command.end(*failure);
    DrawnPicture drawn{
        scan.command.inputs().names()[0], QFile::decodeName(path), {}, 0, {}, {}, {}};
    auto read = this->read(scan, drawn);
    if (const int* status = std::get_if<int>(&read))
        return *status;
    const auto& data = std::get<PlotData>(read);
    if (const std::optional<Failure> failure = write(data, drawn, output))
        return scan.command.end(*failure);
    drawn.what = data.what;
    drawn.markers = data.points.positions.size();
    for (const PointLabel& label : data.labels)
        drawn.labels.append(label.text);
    m_pictures.append(jsonOf(drawn));
    if (drawn.markers == 0)
        complain(m_streams, drawn.output + QLatin1String(": shows no marker; there is none in ") +
                                drawn.what + u'.');
    else if (!isQuiet())
        m_streams.error.write(QStringLiteral("%1: %2, markers: %3\n")
                                  .arg(drawn.output, drawn.what, QString::number(drawn.markers))
                                  .toUtf8());
    return StatusFine;
}

int Plot::run() {
    const auto request = plotRequest(m_arguments);
    const auto names = pictureNames(m_arguments);
    for (const Failure* failure : {std::get_if<Failure>(&request), std::get_if<Failure>(&names)})
        if (failure != nullptr) {
            complain(m_streams, failure->message);
            return failure->status;
        }
    m_request = std::get<PlotRequest>(request);
    m_names = std::get<PictureNames>(names);
    openInputs();
    if (const std::optional<Failure> failure = openReport())
        return m_scans.front().command.end(*failure);
    int status = StatusFine;
    qsizetype i = 0;
    for (Scan& scan : m_scans) {
        const QByteArray &file = m_arguments.files[i], &path = m_names.paths[i];
        ++i;
        if (scan.status == StatusFine)
            scan.status = draw(scan, path);
        if (scan.status != StatusFine)
            m_failed.append(QFile::decodeName(file));
        status = std::max(status, scan.status);
    }
    if (const std::optional<Failure> failure = writeReport())
        status = std::max(status, m_scans.front().command.end(*failure));
    return status;
}

} // namespace

int plotCommand(const Arguments& arguments, Streams& streams) {
    return Plot(arguments, streams).run();
}

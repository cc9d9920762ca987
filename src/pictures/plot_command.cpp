#include "plot_command.h"

#include "picture_names.h"
#include "pictures.h"
#include "plot_arguments.h"
#include "prepare_words.h"
#include "safe_output.h"
#include "scan_command.h"
#include "screenless.h"

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
    int draw(Scan& scan, const QByteArray& path);
    std::variant<PlotData, int> read(Scan& scan);
    std::optional<Failure> startDrawing();
    std::optional<Failure> write(const PlotData& data, const QString& name, SafeOutput& output,
                                 const QByteArray& path);
    bool isQuiet() const { return m_arguments.has("--quiet"); }

    const Arguments& m_arguments;
    const Arguments m_columns;
    Streams& m_streams;
    PlotRequest m_request;
    PictureNames m_names;
    std::list<Scan> m_scans;
    Inputs m_everyInput; // no picture may replace one
    std::optional<Screenless> m_screenless;
};

void Plot::openInputs() {
    for (const QByteArray& file : m_arguments.files) {
        Scan& scan = m_scans.emplace_back(m_columns, m_streams);
        if (const std::optional<Failure> failure = scan.command.readInputs({file}))
            scan.status = scan.command.end(*failure);
        m_everyInput.protect(scan.command.inputs());
    }
}

// The data, or the exit status where it was said what is wrong with them.
std::variant<PlotData, int> Plot::read(Scan& scan) {
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
        if (!isQuiet())
            m_streams.error.write(textOf({{name}, {}, read.report, QStringLiteral("read")}));
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

std::optional<Failure> Plot::write(const PlotData& data, const QString& name, SafeOutput& output,
                                   const QByteArray& path) {
    if (std::optional<Failure> failure = startDrawing())
        return failure;
    const auto picture = pictureOf(data, name, m_request, m_names.format);
    if (const auto* failure = std::get_if<Failure>(&picture))
        return *failure;
    if (!writePicture(output.file(), m_names.format, std::get<Picture>(picture)))
        return Failure{StatusUnwritable,
                       QFile::decodeName(path) + QLatin1String(": cannot be written: ") +
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
    const QString name = scan.command.inputs().names()[0];
    auto read = this->read(scan);
    if (const int* status = std::get_if<int>(&read))
        return *status;
    const auto& data = std::get<PlotData>(read);
    if (const std::optional<Failure> failure = write(data, name, output, path))
        return scan.command.end(*failure);
    const QString picture = QFile::decodeName(path);
    const qsizetype count = data.points.positions.size();
    if (count == 0)
        complain(m_streams, picture + QLatin1String(": shows no marker; there is none in ") +
                                data.what + u'.');
    else if (!isQuiet())
        m_streams.error.write(
            QStringLiteral("%1: %2, markers: %3\n").arg(picture, data.what).arg(count).toUtf8());
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
    int status = StatusFine;
    qsizetype i = 0;
    for (Scan& scan : m_scans) {
        const QByteArray& path = m_names.paths[i++];
        if (scan.status == StatusFine)
            scan.status = draw(scan, path);
        status = std::max(status, scan.status);
    }
    return status;
}

} // namespace

int plotCommand(const Arguments& arguments, Streams& streams) {
    return Plot(arguments, streams).run();
}

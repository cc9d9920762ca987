#include "check.h"

#include "check_report.h"
#include "diagnosis.h"
#include "exit_status.h"
#include "file_writing.h"
#include "inputs.h"
#include "prepare.h"
#include "progress_file.h"
#include "safe_output.h"
#include "table_head.h"
#include "unpacked.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryFile>

namespace {

// The first lines unpacked, and what else the file's first bytes say.
std::optional<Failure> readFacts(const Inputs& inputs, qsizetype i, FileFacts& facts,
                                 bool& isWhole) {
    const QString& name = inputs.names()[i];
    if (!inputs.isPiped(i)) {
        facts.path = name;
        facts.pathBytes = QFile::encodeName(QFileInfo(name).absoluteFilePath()).size();
    }
    QFile file(inputs.paths()[i]);
    const auto failure = [&](const QString& reason) {
        return Failure{StatusUnreadable, name + QStringLiteral(": cannot be read: ") + reason};
    };
    if (!file.open(QIODevice::ReadOnly))
        return failure(file.errorString());
    const QByteArray start = file.peek(64 * 1024);
    UnpackedDevice unpacked(file);
    if (!unpacked.open(QIODevice::ReadOnly))
        return failure(unpacked.errorString());
    facts.foreignKind = foreignKind(unpacked.start());
    if (!facts.foreignKind.isEmpty())
        return std::nullopt;
    facts.packing = unpacked.packing();
    facts.hasLoneReturns =
        facts.packing == QLatin1String("plain") && start.contains('\r') && !start.contains('\n');
    TableHead head = readTableHead(unpacked);
    if (head.isFailed)
        return failure(unpacked.errorString());
    facts.head = head.text;
    isWhole = head.isWhole;
    return std::nullopt;
}

// A file that the window reads without titles is judged as such.
PrepareOptions optionsFor(const WindowReading& reading) {
    PrepareOptions options;
    if (reading.layout && reading.layout->headerLines == 0) {
        options.noHeader = true;
        options.chromosome = "1";
        options.position = "2";
        options.p = "3";
    }
    return options;
}

// The table as `prepare` takes it.
std::variant<Understanding, Refusal> rightColumns(const FileFacts& facts, bool isWhole,
                                                  const PrepareOptions& options) {
    if (!facts.foreignKind.isEmpty())
        return Refusal{RefusalCode::ForeignFile, {}, {}, {}, 0};
    return understand({facts.head.constData(), static_cast<size_t>(facts.head.size())}, isWhole,
                      options);
}

// What only the rows tell: `prepare` itself is tried on the first lines. Unless these are all, what
// they lack may come later.
std::optional<Refusal> refusalOfRows(const FileFacts& facts, bool isWhole,
                                     const PrepareOptions& options) {
    QTemporaryFile head, prepared;
    if (!head.open() || head.write(facts.head) != facts.head.size() || !head.flush() ||
        !prepared.open())
        return std::nullopt;
    const auto result = prepare({{head.fileName()}, options, nullptr, [](qint64) {}}, prepared);
    const auto* refusal = std::get_if<Refusal>(&result);
    const bool isChoice = refusal != nullptr && (refusal->code == RefusalCode::SeveralTests ||
                                                 refusal->code == RefusalCode::SeveralTraits);
    return isChoice || (refusal != nullptr && isWhole) ? std::optional(*refusal) : std::nullopt;
}

class Check {
public:
    Check(const Arguments& arguments, Streams& streams)
        : m_arguments(arguments), m_streams(streams),
          m_isTextWanted(arguments.value("--json") != QByteArray("-")),
          m_progress(streams.isErrorTerminal && !arguments.has("--quiet")) {}

    int run();

private:
    void checkFile(qsizetype i, const QByteArray& word);
    void complainOf(const Failure& failure) {
        if (!failure.message.isEmpty())
            complain(m_streams, failure.message);
        m_status = std::max<int>(m_status, failure.status);
    }
    void writeJson(SafeOutput& output);

    const Arguments& m_arguments;
    Streams& m_streams;
    Inputs m_inputs;
    QJsonArray m_reports;
    bool m_isTextWanted;
    bool m_progress;
    int m_status = StatusFine;
};

void Check::checkFile(qsizetype i, const QByteArray& word) {
    FileFacts facts;
    bool isWhole = false;
    if (const auto failure = readFacts(m_inputs, i, facts, isWhole)) {
        complainOf(*failure);
        return;
    }
    const QString& name = m_inputs.names()[i];
    ProgressFile file(m_inputs.paths()[i], name, m_progress ? &m_streams.error : nullptr);
    WindowReading reading = readAsWindow(file);
    if (reading.unreadable) {
        complainOf(
            {StatusUnreadable, name + QStringLiteral(": cannot be read: ") + file.errorString()});
        return;
    }
    const PrepareOptions options = optionsFor(reading);
    auto right = rightColumns(facts, isWhole, options);
    CheckReport report{name, QFile::decodeName(word), facts.packing,
                       diagnose(facts, std::move(reading), std::move(right))};
    Diagnosis& diagnosis = report.diagnosis;
    if (!diagnosis.findings.isEmpty() && std::holds_alternative<Understanding>(diagnosis.right))
        diagnosis.leftToChoose = refusalOfRows(facts, isWhole, options);
    if (m_isTextWanted)
        m_streams.out.write((i > 0 ? "\n" : "") + textOf(report, m_arguments.has("--quiet")));
    if (m_arguments.has("--json"))
        m_reports.append(jsonOf(report));
    if (report.diagnosis.verdict != Verdict::Opens)
        m_status = std::max<int>(m_status, StatusNo);
}

void Check::writeJson(SafeOutput& output) {
    const QJsonObject document{{"version", 1}, {"command", "check"}, {"files", m_reports}};
    const QByteArray text = QJsonDocument(document).toJson();
    writeAll(output.file(), text);
    if (const auto failure = output.commit())
        complainOf(*failure);
}

int Check::run() {
    for (const QByteArray& word : m_arguments.files)
        if (const auto failure = m_inputs.add(word))
            complainOf(*failure);
    std::optional<SafeOutput> json;
    if (const auto path = m_arguments.value("--json")) {
        json.emplace(*path, "--json");
        if (const auto failure = json->open(m_inputs)) {
            complainOf(*failure);
            return failure->status;
        }
    }
    for (qsizetype i = 0; i < m_inputs.paths().size(); ++i)
        if (m_inputs.isGood(i))
            checkFile(i, m_arguments.files[i]);
    if (json)
        writeJson(*json);
    return m_status;
}

} // namespace

int check(const Arguments& arguments, Streams& streams) {
    return Check(arguments, streams).run();
}

#include "scan_command.h"

#include "column_option.h"
#include "prepare_arguments.h"
#include "table_head.h"
#include "unpacked.h"

#include <QFile>
#include <QRegularExpression>
#include <algorithm>
#include <sys/stat.h>

namespace {

ExitStatus statusOf(RefusalCode code) {
    switch (code) {
    case RefusalCode::Unreadable:
    case RefusalCode::Damaged:
        return StatusUnreadable;
    case RefusalCode::Unwritable:
        return StatusUnwritable;
    case RefusalCode::UnknownColumn:
        return StatusWrongCall;
    default:
        return StatusNotUnderstood;
    }
}

// Whether an addition to a command line takes the place of an option. Markers that are looked up by
// name need no column of positions.
bool isReplaced(const QByteArray& option, const QByteArrayList& addition) {
    const bool mayComeAgain = option == "--where";
    return (addition.contains(option) && !mayComeAgain) ||
           (option == "--position" && addition.contains("--positions"));
}

// The command line with options more, in place of the same options where it had some.
QByteArray commandWith(const char* name, const QByteArrayList& words, const QByteArray& addition) {
    const QByteArrayList added = addition.split(' ');
    QByteArray command = QByteArray("pelmark-tools ") + name;
    bool isValue = false;
    for (const QByteArray& word : words) {
        const QByteArray option = word.split('=').first();
        const bool isSame = !isValue && option.startsWith("--") && isReplaced(option, added);
        if (!isSame && !isValue)
            command += ' ' + shellQuoted(word);
        isValue = isSame && word == option && option != "--no-header" && option != "--zero-based";
    }
    return command + ' ' + addition;
}

// "This decides:", with the words that the user has to replace.
QByteArray howToDecide(const QByteArrayList& options) {
    QByteArrayList blanks;
    for (const char* const word : {"COLUMN", "FILE", "NAME", "N"})
        if (std::any_of(options.begin(), options.end(), [&](const QByteArray& option) {
                return (option + ' ').contains(' ' + QByteArray(word) + ' ');
            }))
            blanks += word;
    return (options.size() == 1 ? "This decides" : "Each of these decides") +
           (blanks.isEmpty() ? QByteArray() : ", with " + blanks.join(" and ") + " filled in") +
           ':';
}

} // namespace

std::optional<Failure> ScanCommand::readInputs(const QByteArrayList& files) {
    for (const QByteArray& file : files)
        if (std::optional<Failure> failure = m_inputs.add(file))
            return failure;
    m_positions.knowPipes(m_inputs);
    if (const auto file = m_arguments.value("--positions"))
        if (std::optional<Failure> failure = m_positions.add(*file))
            return failure;
    m_inputs.protect(m_positions);
    return std::nullopt;
}

std::optional<Failure> ScanCommand::readParts(const QByteArrayList& files) {
    for (const QByteArray& file : files) {
        struct stat status {};
        if (stat(file.constData(), &status) == 0 && m_inputs.contains(status))
            return Failure{
                StatusWrongCall,
                QFile::decodeName(file) +
                    QStringLiteral(": is given twice, so its markers would count twice.")};
        if (std::optional<Failure> failure = m_inputs.add(file))
            return failure;
    }
    return readInputs({});
}

// Only --test needs the table to tell what its value is; any fault there is met again later.
std::variant<PrepareOptions, Failure> ScanCommand::readOptions() {
    TableHead head;
    QFile file(m_inputs.paths()[0]);
    if (m_arguments.has("--test") && file.open(QIODevice::ReadOnly)) {
        UnpackedDevice unpacked(file);
        if (unpacked.open(QIODevice::ReadOnly))
            head = readTableHead(unpacked);
    }
    Arguments arguments = m_arguments;
    arguments.options.remove("--p");
    if (m_arguments.has(m_pOption))
        arguments.options["--p"] = m_arguments.options[m_pOption];
    auto options = prepareOptions(
        arguments, {head.text.constData(), static_cast<size_t>(head.text.size())}, head.isWhole);
    if (auto* failure = std::get_if<Failure>(&options))
        failure->message = withPOption(failure->message);
    if (auto* read = std::get_if<PrepareOptions>(&options); read && !m_positions.paths().isEmpty())
        read->positionsFile = m_positions.paths()[0];
    return options;
}

std::optional<Failure> ScanCommand::openOutputs(std::initializer_list<const char*> options,
                                                bool isReadable) {
    for (const char* option : options)
        if (const auto path = m_arguments.value(option))
            if (std::optional<Failure> failure = openOutput(option, *path, false))
                return failure;
    return openOutput("--output", tablePath(), isReadable);
}

std::optional<Failure> ScanCommand::openOutput(const char* option, const QByteArray& path,
                                               bool isReadable) {
    for (const Output& other : m_outputs)
        if (leadToOneFile(other.place, path))
            return Failure{StatusWrongCall,
                           QStringLiteral("%1 %2: two outputs cannot share a file.")
                               .arg(QString::fromUtf8(other.option), QString::fromUtf8(path))};
    m_outputs.emplace_back(option, path, isReadable);
    return m_outputs.back().file.open(m_inputs);
}

QFile* ScanCommand::output(const char* option) {
    for (Output& output : m_outputs)
        if (output.option == option)
            return &output.file.file();
    return nullptr;
}

QString ScanCommand::tableName() const {
    return tablePath() == "-" ? QStringLiteral("standard output") : QFile::decodeName(tablePath());
}

std::optional<Failure> ScanCommand::commitOutputs() {
    for (Output& output : m_outputs)
        if (std::optional<Failure> failure = output.file.commit())
            return failure;
    return std::nullopt;
}

QString ScanCommand::withPOption(QString text) const {
    static const QRegularExpression p(QStringLiteral("--p(?![\\w-])"));
    return text.replace(p, QString::fromLatin1(m_pOption));
}

std::function<void(qint64)> ScanCommand::progress() {
    if (!isWatched())
        return [](qint64) {};
    return [this](qint64 bytes) {
        m_streams.error.write("\r\033[K" + QByteArray::number(bytes / 1'000'000) + " MB read");
    };
}

void ScanCommand::clearProgress() {
    if (isWatched())
        m_streams.error.write("\r\033[K");
}

int ScanCommand::end(const Failure& failure) {
    if (!failure.message.isEmpty())
        complain(m_streams, failure.message);
    return failure.status;
}

// "a.txt:3: ", unless the message says itself what it is about.
QString ScanCommand::whereOf(const Refusal& refusal) const {
    const QString name = m_inputs.names()[refusal.input];
    if (refusal.code == RefusalCode::Unwritable)
        return tableName() + QStringLiteral(": ");
    if (refusal.line > 0)
        return QStringLiteral("%1:%2: ").arg(name, QString::number(refusal.line));
    const bool isOfTable =
        refusal.code >= RefusalCode::NotATable && refusal.code <= RefusalCode::SeveralSamples &&
        refusal.code != RefusalCode::UnknownColumn && refusal.code != RefusalCode::DifferentColumns;
    return isOfTable ? name + QStringLiteral(": ") : QString();
}

int ScanCommand::refuse(const Refusal& refusal) {
    const QString message = m_positions.named(m_inputs.named(refusal.message));
    complain(m_streams, whereOf(refusal) + withPOption(message));
    const bool isToChooseFrom =
        refusal.code != RefusalCode::NoChromosome && refusal.code != RefusalCode::NoPosition;
    if (!refusal.candidates.isEmpty() && isToChooseFrom)
        m_streams.error.write("  to choose from: " + refusal.candidates.join(", ") + '\n');
    if (!refusal.options.isEmpty())
        m_streams.error.write("  " + howToDecide(refusal.options) + '\n');
    for (const QByteArray& option : refusal.options)
        m_streams.error.write("    " +
                              commandWith(m_name, m_arguments.words,
                                          withPOption(QString::fromUtf8(option)).toUtf8()) +
                              '\n');
    return statusOf(refusal.code);
}

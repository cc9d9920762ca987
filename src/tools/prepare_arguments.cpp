#include "prepare_arguments.h"

#include "table_format.h"

#include <QFile>
#include <limits>

namespace {

// A number of bytes, perhaps with K, M, G or T for powers of 1024. 0 where it is none.
qint64 sizeOf(QByteArray text) {
    constexpr std::string_view units = "KMGT";
    int shift = 0;
    const size_t unit = text.isEmpty() ? std::string_view::npos : units.find(text.toUpper().back());
    if (unit != std::string_view::npos) {
        shift = 10 * static_cast<int>(unit + 1);
        text.chop(1);
    }
    const qint64 number = text.toLongLong();
    return number > 0 && number <= (std::numeric_limits<qint64>::max() >> shift) ? number << shift
                                                                                 : 0;
}

std::optional<Failure> readPSource(const Arguments& arguments, PrepareOptions& options) {
    const std::optional<QByteArray> source = arguments.value("--p-from");
    for (const auto& [option, itsSource] :
         {std::pair("--z", "z"), std::pair("--beta", "beta,se"), std::pair("--se", "beta,se")})
        if (arguments.has(option) && source.value_or("") != itsSource)
            return wrongCall(QStringLiteral("%1 is for --p-from %2. Give both, or neither.")
                                 .arg(QLatin1String(option), QLatin1String(itsSource)));
    if (!source)
        return std::nullopt;
    if (arguments.has("--p") || arguments.has("--p-is"))
        return wrongCall(
            QStringLiteral("--p-from computes p; it cannot be combined with --p or --p-is."));
    if (*source == "z")
        options.pSource = PSource::Z;
    else if (*source == "beta,se")
        options.pSource = PSource::BetaAndError;
    else
        return wrongCall(
            QStringLiteral("--p-from %1: write z or beta,se; --z, --beta and --se name the "
                           "columns.")
                .arg(QString::fromUtf8(*source)));
    return std::nullopt;
}

std::optional<Failure> readWhere(const Arguments& arguments, PrepareOptions& options) {
    for (const QByteArray& text : arguments.options.value("--where")) {
        const qsizetype equals = text.indexOf('=');
        if (equals < 1)
            return wrongCall(
                QStringLiteral("--where %1: write COLUMN=VALUE.").arg(QString::fromUtf8(text)));
        options.where.append({text.left(equals), text.mid(equals + 1)});
    }
    return std::nullopt;
}

std::optional<Failure> readNumbers(const Arguments& arguments, PrepareOptions& options) {
    if (const auto text = arguments.value("--min-markers")) {
        options.minMarkers = text->toLongLong();
        if (options.minMarkers < 1)
            return wrongCall(QStringLiteral("--min-markers %1: write a whole number from 1.")
                                 .arg(QString::fromUtf8(*text)));
    }
    if (const auto text = arguments.value("--memory")) {
        options.memory = sizeOf(*text);
        if (options.memory == 0)
            return wrongCall(QStringLiteral("--memory %1: write a size such as 512M or 2G.")
                                 .arg(QString::fromUtf8(*text)));
    }
    return std::nullopt;
}

// The parser let none but these values through.
void readChoices(const Arguments& arguments, PrepareOptions& options) {
    const QByteArray scale = arguments.value("--p-is").value_or("");
    if (!scale.isEmpty())
        options.pScale = scale == "p"          ? PScale::P
                         : scale == "neglog10" ? PScale::NegLog10
                         : scale == "log10"    ? PScale::Log10
                                               : PScale::Ln;
    const QByteArray zero = arguments.value("--zero").value_or("smallest");
    options.zeroP = zero == "drop" ? ZeroP::Drop : zero == "fail" ? ZeroP::Fail : ZeroP::Smallest;
    const QByteArray names = arguments.value("--chromosome-names").value_or("keep");
    options.chromosomeNames = names == "plain" ? ChromosomeNames::Plain
                              : names == "chr" ? ChromosomeNames::Chr
                                               : ChromosomeNames::Keep;
}

// A column where the table has one with this title or number, else a test's name.
void readTest(const Arguments& arguments, std::string_view head, bool isWhole,
              PrepareOptions& options) {
    options.testName = arguments.value("--test-name");
    options.test = arguments.value("--test");
    if (!options.test || options.testName)
        return;
    const auto understood = understand(head, isWhole, options);
    const auto* refusal = std::get_if<Refusal>(&understood);
    if (refusal == nullptr || refusal->code != RefusalCode::UnknownColumn)
        return;
    options.testName = options.test;
    options.test.reset();
}

} // namespace

std::variant<PrepareOptions, Failure> prepareOptions(const Arguments& arguments,
                                                     std::string_view head, bool isWhole) {
    PrepareOptions options;
    options.chromosome = arguments.value("--chromosome");
    options.position = arguments.value("--position");
    options.p = arguments.value("--p");
    options.name = arguments.value("--name");
    options.z = arguments.value("--z");
    options.beta = arguments.value("--beta");
    options.standardError = arguments.value("--se");
    options.chromosomeValue = arguments.value("--chromosome-value");
    options.sample = arguments.value("--sample");
    options.noHeader = arguments.has("--no-header");
    options.zeroBased = arguments.has("--zero-based");
    options.authorBuild = arguments.has("--build");
    options.allColumns = arguments.has("--all-columns");
    options.lineNumbers = arguments.has("--lines");
    options.positionsFile = QFile::decodeName(arguments.value("--positions").value_or(""));
    for (const auto& read : {readPSource, readWhere, readNumbers})
        if (const std::optional<Failure> failure = read(arguments, options))
            return *failure;
    readChoices(arguments, options);
    readTest(arguments, head, isWhole, options);
    return options;
}

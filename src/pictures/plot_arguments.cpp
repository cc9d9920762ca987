#include "plot_arguments.h"

#include "plot_geometry.h"

#include <QRegularExpression>

namespace {

Failure wrongValue(const char* option, const QByteArray& value, const char* advice) {
    return wrongCall(
        QStringLiteral("%1 %2: %3.")
            .arg(QLatin1String(option), QString::fromUtf8(value), QLatin1String(advice)));
}

// Two whole numbers with `between` between them; invalid where the text is anything else.
std::optional<std::pair<int, int>> twoNumbers(const QByteArray& text, QChar between) {
    const QStringList parts = QString::fromUtf8(text).split(between);
    bool isFirst = false, isSecond = false;
    const int first = parts.value(0).toInt(&isFirst), second = parts.value(1).toInt(&isSecond);
    return parts.size() == 2 && isFirst && isSecond && first >= 0 && second >= 0
               ? std::optional(std::pair(first, second))
               : std::nullopt;
}

std::optional<Failure> readRange(const Arguments& arguments, const char* option,
                                 std::optional<PositionRange>& range) {
    const std::optional<QByteArray> text = arguments.value(option);
    if (!text)
        return std::nullopt;
    const auto numbers = twoNumbers(QByteArray(*text).replace(",", ""), u'-');
    if (!numbers)
        return wrongValue(option, *text,
                          "write the first and the last position, such as 1200000-1,500,000");
    if (numbers->first > numbers->second)
        return wrongValue(option, *text, "the first position comes after the last one");
    range = {numbers->first, numbers->second};
    return std::nullopt;
}

std::optional<Failure> readSize(const Arguments& arguments, PlotRequest& request) {
    const bool isScreen = !arguments.has("--size");
    const char* const option = isScreen ? "--screen" : "--size";
    if (!isScreen && arguments.has("--screen"))
        return wrongCall(
            QStringLiteral("--screen and --size both say how large the plot is. Give one "
                           "of them."));
    const QByteArray text = arguments.value(option).value_or("1920x1080");
    const auto numbers = twoNumbers(text, u'x');
    if (!numbers)
        return wrongValue(option, text, "write width and height in pixels, such as 1920x1080");
    const QSize size(numbers->first, numbers->second);
    request.size = isScreen ? plotSize(size) : size;
    if (isScreen && request.quantiles)
        request.size = QSize(request.size.height(), request.size.height());
    if (request.size.isEmpty())
        return wrongValue(option, text, "the plot would have no pixels");
    return std::nullopt;
}

std::optional<Failure> readScale(const Arguments& arguments, PlotRequest& request) {
    constexpr int largest = 100;
    if (const auto text = arguments.value("--scale")) {
        request.magnification = text->toInt();
        if (request.magnification < 1 || request.magnification > largest)
            return wrongValue("--scale", *text, "write a whole number from 1 to 100");
    }
    const qint64 longer = std::max(request.size.width(), request.size.height());
    if (longer * std::max(request.magnification, 1) > mostPixels)
        return wrongCall(
            QStringLiteral("the picture would be %1 pixels long; %2 are possible. Choose "
                           "a smaller --size, --screen or --scale.")
                .arg(longer * std::max(request.magnification, 1))
                .arg(mostPixels));
    return std::nullopt;
}

std::optional<Failure> readLabels(const Arguments& arguments, PlotRequest& request) {
    constexpr int most = 1000;
    const auto text = arguments.value("--label-hits");
    if (!text)
        return std::nullopt;
    request.labelledHits = text->toInt();
    if (request.labelledHits < 1 || request.labelledHits > most)
        return wrongValue("--label-hits", *text, "write a whole number from 1 to 1000");
    if (request.asIs)
        return wrongCall(
            QStringLiteral("--label-hits takes names from a column that the window does "
                           "not read. Leave out --as-is."));
    return std::nullopt;
}

std::optional<Failure> checkTogether(const Arguments& arguments, const PlotRequest& request) {
    if (request.quantiles &&
        (request.isOfOneChromosome() || !request.referenceLines || request.labelledHits > 0))
        return wrongCall(
            QStringLiteral("--qq draws no positions; it cannot be combined with --range, "
                           "--mark, --join, --no-lines or --label-hits."));
    if (!request.asIs)
        return std::nullopt;
    for (const char* option :
         {"--chromosome-column", "--position", "--p", "--name", "--test", "--test-name", "--p-is",
          "--p-from", "--z", "--beta", "--se", "--chromosome-value", "--where", "--sample",
          "--positions", "--no-header", "--zero-based", "--build"})
        if (arguments.has(option))
            return wrongCall(
                QStringLiteral("--as-is reads the file as the window does, which knows no "
                               "%1. Leave out one of the two.")
                    .arg(QLatin1String(option)));
    return std::nullopt;
}

} // namespace

std::variant<PlotRequest, Failure> plotRequest(const Arguments& arguments) {
    PlotRequest request;
    request.asIs = arguments.has("--as-is");
    request.chromosome = arguments.value("--chromosome");
    request.joined = arguments.has("--join");
    request.referenceLines = !arguments.has("--no-lines");
    request.quantiles = arguments.has("--qq");
    std::optional<Failure> failure = readRange(arguments, "--range", request.range);
    if (!failure)
        failure = readRange(arguments, "--mark", request.mark);
    for (const auto& read : {readSize, readScale, readLabels})
        if (!failure)
            failure = read(arguments, request);
    if (!failure)
        failure = checkTogether(arguments, request);
    if (failure)
        return *failure;
    return request;
}

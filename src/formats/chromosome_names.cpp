#include "chromosome_names.h"

#include "characters.h"

#include <QHash>
#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace {

using namespace std::string_view_literals;

// In the order in which they come after the numbers.
constexpr std::array letteredChromosomes = {"X"sv, "Y"sv, "Z"sv, "W"sv, "XY"sv, "MT"sv};

constexpr std::array unplacedNames = {
    ""sv,       "0"sv,  "-9"sv,       "."sv,       "-"sv,        "na"sv,        "n/a"sv,
    "#na"sv,    "nr"sv, "nan"sv,      "-nan"sv,    "none"sv,     "null"sv,      "u"sv,
    "uextra"sv, "un"sv, "unplaced"sv, "unknown"sv, "unmapped"sv, "unassigned"sv};

enum class Class { Numbered, Lettered, Text, Unplaced };

bool isAllDigits(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, isDigit);
}

char lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

std::string inCase(std::string_view text, char (*changed)(char)) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), changed);
    return result;
}

bool startsWithChr(std::string_view label) {
    return label.size() > 3 && inCase(label.substr(0, 3), lower) == "chr";
}

std::string_view withoutChr(std::string_view label) {
    return startsWithChr(label) ? label.substr(3) : label;
}

std::string_view withoutZeros(std::string_view digits) {
    return digits.substr(std::min(digits.find_first_not_of('0'), digits.size() - 1));
}

QByteArray bytes(std::string_view text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

std::string_view view(const QByteArray& text) {
    return {text.constData(), static_cast<size_t>(text.size())};
}

// Takes the digits off the front of the text.
std::string_view takeDigits(std::string_view& text) {
    const auto end = std::min(text.find_first_not_of("0123456789"), text.size());
    const std::string_view digits = text.substr(0, end);
    text.remove_prefix(end);
    return digits;
}

// Negative, zero or positive as a number of any length is smaller than, equal to or greater than
// another.
int compareNumbers(std::string_view a, std::string_view b) {
    a = withoutZeros(a);
    b = withoutZeros(b);
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    return a.compare(b);
}

// Compares texts without regard to case, and the numbers in them as numbers.
int compareNaturally(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        int order = 0;
        if (isDigit(a[0]) && isDigit(b[0])) {
            order = compareNumbers(takeDigits(a), takeDigits(b));
        } else {
            order =
                static_cast<unsigned char>(lower(a[0])) - static_cast<unsigned char>(lower(b[0]));
            a.remove_prefix(1);
            b.remove_prefix(1);
        }
        if (order != 0)
            return order;
    }
    return static_cast<int>(!a.empty()) - static_cast<int>(!b.empty());
}

// The place of a key in the list of lettered chromosomes, or its length.
size_t letteredPlace(std::string_view key) {
    return static_cast<size_t>(std::ranges::find(letteredChromosomes, key) -
                               letteredChromosomes.begin());
}

// What decides the order of two chromosomes before their texts do.
std::pair<Class, size_t> classOf(std::string_view key) {
    if (isUnplaced(key))
        return {Class::Unplaced, 0};
    if (isDigit(key[0]))
        return {Class::Numbered, 0};
    const size_t place = letteredPlace(key);
    return {place < letteredChromosomes.size() ? Class::Lettered : Class::Text, place};
}

// The number of a key that is one, such as 23; -1 for any other and for large ones.
int numberOf(const QByteArray& key) {
    bool isNumber = false;
    const int number = isAllDigits(view(key)) ? key.toInt(&isNumber) : -1;
    return isNumber ? number : -1;
}

// The human chromosome of a sequence's accession, NC_000001.10 for example.
std::optional<QByteArray> chromosomeOfAccession(const QByteArray& label) {
    const QByteArray accession = label.toUpper();
    const qsizetype point = accession.indexOf('.');
    const QByteArray name = point < 0 ? accession : accession.first(point);
    const bool isVersioned = point < 0 || isAllDigits(view(accession).substr(size_t(point) + 1));
    if (!isVersioned || !name.startsWith("NC_") || name.size() != 9 ||
        !isAllDigits(view(name).substr(3)))
        return std::nullopt;
    const int number = name.sliced(3).toInt();
    if (number == 12920)
        return "MT";
    if (number < 1 || number > 24)
        return std::nullopt;
    return number == 23 ? "X" : number == 24 ? "Y" : QByteArray::number(number);
}

// What the numbers of the sex chromosomes and the mitochondrial one mean in a table.
struct NumberMeanings {
    bool areHuman = true; // no number above 26 occurs
    bool has26 = false;
    bool isPlink = false;
    bool isSsf = false;

    QByteArray nameOf25() const { return has26 || isPlink ? "XY" : isSsf ? "MT" : "25"; }

    QByteArray nameOf(int number) const {
        if (!areHuman)
            return QByteArray::number(number);
        return number == 23 ? "X" : number == 24 ? "Y" : number == 25 ? nameOf25() : "MT";
    }
};

bool hasMeaning(int number) {
    return number >= 23 && number <= 26;
}

NumberMeanings numberMeanings(const QList<QByteArray>& labels, bool isPlink, bool isSsf) {
    NumberMeanings meanings{true, false, isPlink, isSsf};
    for (const QByteArray& label : labels) {
        const QByteArray key = chromosomeKey(view(label));
        meanings.has26 |= key == "26";
        meanings.areHuman &= !isAllDigits(view(key)) || compareNumbers(view(key), "26") <= 0;
    }
    return meanings;
}

// Names chromosomes without "chr".
QByteArray plainName(const QByteArray& label, const NumberMeanings& meanings) {
    if (const std::optional<QByteArray> name = chromosomeOfAccession(label))
        return *name;
    const QByteArray key = chromosomeKey(view(label));
    if (hasMeaning(numberOf(key)))
        return meanings.nameOf(numberOf(key));
    const bool isKnown = isAllDigits(view(key)) || classOf(view(key)).first == Class::Lettered;
    return isKnown ? key : bytes(withoutChr(view(label)));
}

// Names chromosomes as genome browsers do: chr1, chrX, chrM. Other sequences keep their names.
QByteArray chrName(const QByteArray& label, const NumberMeanings& meanings) {
    const QByteArray name = plainName(label, meanings);
    const Class kind = classOf(view(chromosomeKey(view(name)))).first;
    if (kind == Class::Text || kind == Class::Unplaced)
        return label;
    return name == "MT" ? "chrM" : "chr" + name;
}

// True where more than a "chr" or a zero came or went.
bool isTranslated(const QByteArray& label, const QByteArray& name) {
    return chromosomeKey(view(label)) != chromosomeKey(view(name));
}

QString written(const QByteArray& label, const QByteArray& name, const char* why) {
    return QStringLiteral("%1 is written %2%3")
        .arg(QString::fromUtf8(label), QString::fromUtf8(name), QLatin1StringView(why));
}

// For each label, the first spelling of its chromosome.
QList<QByteArray> firstSpellings(const QList<QByteArray>& labels) {
    QHash<QByteArray, QByteArray> byKey;
    byKey.reserve(labels.size());
    QList<QByteArray> spellings;
    spellings.reserve(labels.size());
    for (const QByteArray& label : labels) {
        QByteArray& spelling = byKey[chromosomeKey(view(label))];
        if (spelling.isNull())
            spelling = label;
        spellings += spelling;
    }
    return spellings;
}

NamedChromosomes keptNames(const QList<QByteArray>& labels) {
    NamedChromosomes result{firstSpellings(labels), {}};
    for (qsizetype i = 0; i < labels.size(); ++i)
        if (result.names[i] != labels[i])
            result.remarks += written(labels[i], result.names[i], ", the spelling that came first");
    return result;
}

// The numbers that keep their names although they mean sex chromosomes in some tables, and why.
QList<QString> remarksOnKept(const QList<QByteArray>& labels, const NumberMeanings& meanings) {
    const auto isOneOf = [](const auto& numbers) {
        return [numbers](const QByteArray& label) {
            return numbers(numberOf(chromosomeKey(view(label))));
        };
    };
    if (!meanings.areHuman && std::ranges::any_of(labels, isOneOf(hasMeaning)))
        return {QStringLiteral("23 to 26 are kept: larger numbers occur, so they are not the human "
                               "X, Y, XY and MT")};
    const auto is25 = [](int number) { return number == 25; };
    if (meanings.areHuman && meanings.nameOf25() == "25" &&
        std::ranges::any_of(labels, isOneOf(is25)))
        return {QStringLiteral("25 is kept: it is XY in some tables and MT in others")};
    return {};
}

} // namespace

QByteArray chromosomeKey(std::string_view label) {
    const std::string_view name = withoutChr(label);
    if (isAllDigits(name))
        return bytes(withoutZeros(name));
    const std::string key = inCase(name, upper);
    return key == "M" ? QByteArray("MT") : bytes(key);
}

bool isUnplaced(std::string_view label) {
    const std::string name = inCase(withoutChr(label), lower);
    return std::ranges::find(unplacedNames, name) != unplacedNames.end() || name.starts_with("un_");
}

bool isBefore(std::string_view a, std::string_view b) {
    return ComparedLabel(a) < ComparedLabel(b);
}

ComparedLabel::ComparedLabel(std::string_view label) : m_key(chromosomeKey(label)) {
    const auto [kind, place] = classOf(view(m_key));
    m_group = {static_cast<int>(kind), place};
}

bool ComparedLabel::operator<(const ComparedLabel& other) const {
    if (m_group != other.m_group)
        return m_group < other.m_group;
    const int order = compareNaturally(view(m_key), view(other.m_key));
    return order != 0 ? order < 0 : m_key < other.m_key;
}

NamedChromosomes nameChromosomes(const QList<QByteArray>& labels, ChromosomeNames names,
                                 bool isPlink, bool isSsf) {
    if (names == ChromosomeNames::Keep)
        return keptNames(labels);
    const NumberMeanings meanings = numberMeanings(labels, isPlink, isSsf);
    const QList<QByteArray> spellings = firstSpellings(labels);
    const auto nameOf = names == ChromosomeNames::Plain ? plainName : chrName;
    NamedChromosomes result{{}, remarksOnKept(labels, meanings)};
    for (qsizetype i = 0; i < labels.size(); ++i) {
        result.names += nameOf(spellings[i], meanings);
        if (isTranslated(labels[i], result.names.back()))
            result.remarks += written(labels[i], result.names.back(), "");
    }
    return result;
}

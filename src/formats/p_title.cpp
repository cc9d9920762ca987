#include "p_title.h"

#include "title_table.h"
#include "titles.h"

#include <algorithm>
#include <cctype>

namespace {

// A word of a title, by what it says.
struct Word {
    enum class Kind { P, Log, LogOfP, Minus, Other };
    Kind kind = Kind::Other;
    QByteArray text;
    bool saysMinus = false;
    bool saysTen = false;
};

bool isPWord(const QByteArray& word) {
    return contains(title_table::pWords, viewOf(word));
}

bool isLetters(const QByteArray& text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](char c) {
        return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '\xb5';
    });
}

// "p value" in a row is one word, and so is "log 10".
QList<QByteArray> mergedWords(const QList<QByteArray>& words) {
    QList<QByteArray> merged;
    for (const QByteArray& word : words) {
        const bool isSaid = !merged.isEmpty() && merged.last() == "p" &&
                            contains(title_table::wordsAfterP, viewOf(word));
        if (!merged.isEmpty() && word == "10" && merged.last().endsWith("log"))
            merged.last() += word;
        else if (!isSaid)
            merged += word;
    }
    return merged;
}

bool takePrefix(QByteArray& text, std::string_view prefix) {
    if (!text.startsWith(bytesOf(prefix)))
        return false;
    text.remove(0, qsizetype(prefix.size()));
    return true;
}

// Reads log, log10, mlog10p, neglogpvalue ...: a sign, the logarithm and what it is of, glued.
std::optional<Word> logWord(const QByteArray& text) {
    Word word{Word::Kind::Log, text, false, false};
    QByteArray rest = text;
    if (!rest.startsWith("log"))
        for (const std::string_view sign : title_table::minusPrefixes)
            if (takePrefix(rest, sign)) {
                word.saysMinus = true;
                break;
            }
    word.saysTen = rest.startsWith("log10");
    if (!takePrefix(rest, "log10") && !takePrefix(rest, "log"))
        return std::nullopt;
    if (isPWord(rest))
        word.kind = Word::Kind::LogOfP;
    else if (!rest.isEmpty())
        return std::nullopt;
    return word;
}

// Reads GWASpval as "gwas" and a p word.
QList<Word> gluedWords(const QByteArray& text) {
    for (const std::string_view p : title_table::gluedP) {
        const QByteArray piece = bytesOf(p);
        QByteArray rest = text;
        if (text.startsWith(piece))
            rest.remove(0, piece.size());
        else if (text.endsWith(piece))
            rest.chop(piece.size());
        else
            continue;
        if (isLetters(rest))
            return {{Word::Kind::P, piece}, {Word::Kind::Other, rest}};
    }
    return {{Word::Kind::Other, text}};
}

QList<Word> readWord(const QByteArray& text) {
    if (isPWord(text))
        return {{Word::Kind::P, text}};
    if (contains(title_table::minusWords, viewOf(text)))
        return {{Word::Kind::Minus, text}};
    if (const std::optional<Word> log = logWord(text))
        return {*log};
    return gluedWords(text);
}

QList<Word> readWords(std::string_view raw) {
    QList<Word> words;
    for (const QByteArray& text : mergedWords(titleWords(raw)))
        words += readWord(text);
    return words;
}

bool has(const QList<Word>& words, Word::Kind kind) {
    return std::any_of(words.begin(), words.end(),
                       [&](const Word& word) { return word.kind == kind; });
}

// In the raw title, a minus right before "log".
bool hasMinusSign(std::string_view raw) {
    QByteArray text = bareTitle(raw).toLower();
    text.replace(" ", "");
    text.replace("\xe2\x88\x92", "-"); // the mathematical minus sign
    return text.contains("-log") || text.contains("-(log");
}

// Whether the logarithm at a place is that of p: `log p`, `p -log10`, `p log10` at the end.
bool isLogOfP(const QList<Word>& words, qsizetype at, bool saysMinus) {
    if (at + 1 < words.size() && words[at + 1].kind == Word::Kind::P)
        return true;
    qsizetype before = at - 1;
    while (before >= 0 && words[before].kind == Word::Kind::Minus)
        --before;
    const bool followsP = before >= 0 && words[before].kind == Word::Kind::P;
    return followsP && (saysMinus || (words[at].saysTen && at + 1 == words.size()));
}

// Notes in `title` whether it says a logarithm of p.
void readLog(const QList<Word>& words, std::string_view raw, PTitle& title) {
    title.saysMinus = hasMinusSign(raw) || has(words, Word::Kind::Minus);
    for (qsizetype at = 0; at < words.size(); ++at) {
        const bool saysMinus = title.saysMinus || words[at].saysMinus;
        title.isLog = words[at].kind == Word::Kind::LogOfP ||
                      (words[at].kind == Word::Kind::Log && isLogOfP(words, at, saysMinus));
        title.saysMinus = saysMinus;
        if (title.isLog)
            return;
    }
    title.saysMinus = false;
}

bool isOther(const Word& word, bool isLog) {
    const bool isPartOfLog = word.kind == Word::Kind::Log || word.kind == Word::Kind::Minus;
    return word.kind == Word::Kind::Other || (!isLog && isPartOfLog);
}

// Unlike a covariate, as in bmiadj and whradjbmi.
bool namesAdjustment(const QByteArray& word) {
    return word.startsWith(bytesOf(title_table::adjusted));
}

bool isNever(const QByteArray& word) {
    const auto holds = [&](std::string_view piece) { return word.contains(bytesOf(piece)); };
    return contains(title_table::neverWords, viewOf(word)) || namesAdjustment(word) ||
           std::any_of(std::begin(title_table::neverPieces), std::end(title_table::neverPieces),
                       holds);
}

bool isSecondary(const QByteArray& word, const QList<QByteArray>& words) {
    if (word == bytesOf(title_table::additive) && words.contains(bytesOf(title_table::frequentist)))
        return false;
    return contains(title_table::secondaryWords, viewOf(word));
}

int rankOf(const PTitle& title) {
    const auto in = [&](const auto& list) {
        return [&list](const QByteArray& word) { return contains(list, viewOf(word)); };
    };
    if (title.tier == PTitle::Tier::Secondary)
        return std::any_of(title.words.begin(), title.words.end(), in(title_table::lastWords)) ? 3
                                                                                               : 2;
    if (title.words.isEmpty())
        return 0;
    return std::all_of(title.words.begin(), title.words.end(), in(title_table::plainWords)) ? 1 : 2;
}

void decideTier(PTitle& title) {
    for (const QByteArray& word : title.words)
        if (title.tier != PTitle::Tier::Never && isSecondary(word, title.words)) {
            title.tier = PTitle::Tier::Secondary;
            title.reason = word;
        }
    for (const QByteArray& word : title.words)
        if (isNever(word)) {
            title.tier = PTitle::Tier::Never;
            title.reason = word;
        }
    title.rank = rankOf(title);
}

} // namespace

std::optional<PTitle> readPTitle(std::string_view raw) {
    PTitle title;
    if (contains(title_table::logPTitles, viewOf(normalTitle(raw)))) {
        title.isLog = title.saysMinus = true;
        return title;
    }
    const QList<Word> words = readWords(raw);
    if (!has(words, Word::Kind::P) && !has(words, Word::Kind::LogOfP))
        return std::nullopt;
    readLog(words, raw, title);
    for (const Word& word : words)
        if (isOther(word, title.isLog))
            title.words += word.text;
    std::sort(title.words.begin(), title.words.end());
    decideTier(title);
    return title;
}

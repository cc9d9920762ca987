#include "plain_titles.h"

#include "plain_layout.h"
#include "title_table.h"

#include <QHash>
#include <QRegularExpression>
#include <iterator>

namespace plain {

namespace {

template <typename List>
QStringList listOf(const List& list) {
    QStringList texts;
    for (const std::string_view text : list)
        texts << fromData(text);
    return texts;
}

template <typename List>
QString anyOf(const List& list) {
    return "(?:" + listOf(list).join(u'|') + ")";
}

QString withoutBuilds(QString normal) {
    for (const auto& build : title_table::builds)
        normal.remove(fromData(build.piece));
    const QRegularExpression bare("((?:^|_)" + anyOf(title_table::wordsBeforeBareBuild) + ")_?" +
                                  anyOf(title_table::bareBuilds) + "(?=_|$)");
    return normal.replace(bare, "\\1");
}

// The words of a title, and a letter for what each of them says: P for p, M for minus, L for a
// logarithm, T for one to base 10, Q for the logarithm of p, O for anything else.
struct Words {
    QStringList texts;
    QString kinds;

    void add(const QString& text, char kind) {
        texts << text;
        kinds += QLatin1Char(kind);
    }
};

// A word such as gwaspval: the rest of it counts as a word.
void takeGlued(const QString& word, Words& words) {
    static const QRegularExpression letters("^[a-z\\x{b5}]+$");
    for (const QString& piece : listOf(title_table::gluedP)) {
        const bool isFirst = word.startsWith(piece);
        const QString rest = isFirst                ? word.mid(piece.size())
                             : word.endsWith(piece) ? word.chopped(piece.size())
                                                    : QString();
        if (letters.match(rest).hasMatch()) {
            words.add(piece, 'P');
            return words.add(rest, 'O');
        }
    }
    words.add(word, 'O');
}

void take(const QString& word, Words& words) {
    static const QRegularExpression log("^" + anyOf(title_table::minusPrefixes) + "?(log(?:10)?)(" +
                                        anyOf(title_table::pWords) + ")?$");
    const QRegularExpressionMatch match = log.match(word);
    if (match.hasMatch())
        words.add(word, !match.captured(2).isEmpty() ? 'Q'
                        : match.captured(1) == "log" ? 'L'
                                                     : 'T');
    else if (isIn(title_table::pWords, word))
        words.add(word, 'P');
    else if (isIn(title_table::minusWords, word))
        words.add(word, 'M');
    else
        takeGlued(word, words);
}

Words wordsOf(const QString& normal) {
    QString text = u'_' + normal + u'_';
    text.replace(QRegularExpression("_p(_" + anyOf(title_table::wordsAfterP) + ")+(?=_)"), "_p");
    text.replace("log_10_", "log10_");
    Words words;
    for (const QString& word : text.split(u'_', Qt::SkipEmptyParts))
        take(word, words);
    return words;
}

// Whether a logarithm is that of p: p comes right after it; or right before it, where it says minus
// or is to base 10 and the last word.
bool isOfP(const QString& kinds, qsizetype at, bool saysMinus) {
    static const QRegularExpression afterP("PM*$");
    return kinds[at] == u'Q' || kinds.mid(at + 1).startsWith(u'P') ||
           (afterP.match(kinds.left(at)).hasMatch() &&
            (saysMinus || kinds.mid(at) == QLatin1String("T")));
}

void findLog(const Words& words, const QString& title, PTitle& result) {
    static const QRegularExpression minusSign("(-|\\xe2\\x88\\x92)\\(?log",
                                              QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression logs("[LTQ]");
    result.saysMinus =
        minusSign.match(QString(title).remove(u' ')).hasMatch() || words.kinds.contains(u'M');
    for (qsizetype at = words.kinds.indexOf(logs); at >= 0 && !result.isLog;
         at = words.kinds.indexOf(logs, at + 1)) {
        result.saysMinus |= !words.texts[at].startsWith("log");
        result.isLog = isOfP(words.kinds, at, result.saysMinus);
    }
}

bool isNever(const QString& word) {
    if (isIn(title_table::neverWords, word))
        return true;
    for (const QString& piece : listOf(title_table::neverPieces))
        if (word.contains(piece))
            return true;
    return word.startsWith(fromData(title_table::adjusted));
}

bool isSecondary(const QString& word, const QStringList& words) {
    if (word == fromData(title_table::additive) &&
        words.contains(fromData(title_table::frequentist)))
        return false;
    return isIn(title_table::secondaryWords, word);
}

int rankOf(const QStringList& words) {
    int rank = 0;
    for (const QString& word : words) {
        if (isIn(title_table::lastWords, word))
            return 3;
        rank = qMax(rank, isIn(title_table::plainWords, word) && !isSecondary(word, words) ? 1 : 2);
    }
    return rank;
}

std::optional<PTitle> judged(const QString& title) {
    PTitle result;
    if (isIn(title_table::logPTitles, normalTitle(title))) {
        result.isLog = result.saysMinus = true;
        return result;
    }
    const Words words = wordsOf(normalTitle(title));
    if (!words.kinds.contains(u'P') && !words.kinds.contains(u'Q'))
        return {};
    findLog(words, title, result);
    const QString said = result.isLog ? "PQLTM" : "P";
    QStringList others;
    for (qsizetype i = 0; i < words.texts.size(); ++i)
        if (!said.contains(words.kinds[i]))
            others << words.texts[i];
    for (const QString& word : others) {
        result.isNever |= isNever(word);
        result.tier |= isSecondary(word, others) ? 1 : 0;
    }
    result.rank = rankOf(others);
    others.sort();
    result.others = others.join(u'_');
    return result;
}

} // namespace

QString fromData(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QString bareTitle(QString title) {
    static const QRegularExpression blanks("^[\t-\r ]+|[\t-\r ]+$");
    static const QRegularExpression quoted("^([\"'])(.*)\\1$",
                                           QRegularExpression::DotMatchesEverythingOption);
    if (title.startsWith(QLatin1String("\xef\xbb\xbf")))
        title.remove(0, 3);
    return title.remove(blanks).replace(quoted, "\\2").remove(blanks);
}

QString normalTitle(const QString& title) {
    QString text = bareTitle(title);
    for (QChar& character : text)
        if (character >= u'A' && character <= u'Z')
            character = character.toLower();
    static const QRegularExpression others("[^a-z0-9\\x{80}-\\x{ff}]+");
    static const QRegularExpression ends("^_+|_+$");
    return text.replace(others, "_").remove(ends);
}

QString placeTitle(const QString& title) {
    static QHash<QString, QString> known; // asked for often
    if (!known.contains(title))
        known[title] = withoutBuilds(normalTitle(title)).remove(u'_');
    return known[title];
}

QString buildInTitle(const QString& title) {
    const QString normal = normalTitle(title);
    for (const auto& build : title_table::builds)
        if (normal.contains(fromData(build.piece)))
            return fromData(build.build);
    const QRegularExpression bare("(?:^|_)" + anyOf(title_table::wordsBeforeBareBuild) + "_?(" +
                                  anyOf(title_table::bareBuilds) + ")(?=_|$)");
    return bare.match(normal).captured(1);
}

std::optional<PTitle> pTitle(const QString& title) {
    static QHash<QString, std::optional<PTitle>> known; // asked for often
    if (!known.contains(title))
        known[title] = judged(title);
    return known[title];
}

} // namespace plain

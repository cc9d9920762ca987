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

// The words of a title, those that say p apart.
struct Words {
    bool saysP = false;
    bool isLog = false;
    bool saysMinus = false;
    QStringList others;
};

// A word such as gwaspval: the rest of it counts as a word.
bool takeGlued(const QString& word, Words& words) {
    for (const QString& piece : listOf(title_table::gluedP)) {
        if (!word.startsWith(piece) && !word.endsWith(piece))
            continue;
        words.saysP = true;
        words.others << (word.startsWith(piece) ? word.mid(piece.size())
                                                : word.chopped(piece.size()));
        return true;
    }
    return false;
}

void take(const QString& word, Words& words) {
    static const QRegularExpression log("^(" + anyOf(title_table::minusPrefixes) + ")?" +
                                        anyOf(title_table::logWords) + "(" +
                                        anyOf(title_table::pWords) + ")?$");
    const QRegularExpressionMatch match = log.match(word);
    if (match.hasMatch()) {
        words.isLog = true;
        words.saysMinus |= !match.captured(1).isEmpty();
        words.saysP |= !match.captured(2).isEmpty();
    } else if (isIn(title_table::pWords, word)) {
        words.saysP = true;
    } else if (!takeGlued(word, words)) {
        words.others << word;
    }
}

Words wordsOf(const QString& normal) {
    QString text = u'_' + normal + u'_';
    text.replace(QRegularExpression("_p_" + anyOf(title_table::wordsAfterP) + "(?=_)"), "_p");
    text.replace("log_10_", "log10_");
    Words words;
    if (isIn(title_table::logPTitles, normal)) {
        words.saysP = words.isLog = words.saysMinus = true;
        return words;
    }
    for (const QString& word : text.split(u'_', Qt::SkipEmptyParts))
        take(word, words);
    if (words.isLog) {
        for (const QString& minus : listOf(title_table::minusWords))
            words.saysMinus |= words.others.removeAll(minus) > 0;
    }
    return words;
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
    Words words = wordsOf(normalTitle(title));
    if (!words.saysP)
        return {};
    PTitle result;
    for (const QString& word : words.others)
        result.isNever |= isNever(word);
    for (const QString& word : words.others)
        if (isSecondary(word, words.others))
            result.tier = 1;
    result.rank = rankOf(words.others);
    words.others.sort();
    result.others = words.others.join(u'_');
    result.isLog = words.isLog;
    static const QRegularExpression minusSign("(-|\\xe2\\x88\\x92) *\\(?log",
                                              QRegularExpression::CaseInsensitiveOption);
    result.saysMinus = words.saysMinus || minusSign.match(title).hasMatch();
    return result;
}

} // namespace

QString fromData(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QString normalTitle(const QString& title) {
    QString text = title;
    if (text.startsWith(QLatin1String("\xef\xbb\xbf")))
        text.remove(0, 3);
    text = trimmed(text);
    if (text.size() >= 2 && text.startsWith(u'"') && text.endsWith(u'"'))
        text = trimmed(text.mid(1, text.size() - 2));
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

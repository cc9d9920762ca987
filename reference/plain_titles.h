#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <string_view>

// What titles say, apart from their columns' values. Texts are bytes, one a QChar.
namespace plain {

QString fromData(std::string_view text);

// Whether a list of such texts has this one.
template <typename List>
bool isIn(const List& list, const QString& text) {
    for (const std::string_view each : list)
        if (text == fromData(each))
            return true;
    return false;
}

QString bareTitle(QString title); // without quotes and blanks
QString normalTitle(const QString& title);
QString placeTitle(const QString& title);
QString buildInTitle(const QString& title); // "37" for hg19; empty without

// How good a title is for p; less is better.
struct PTitle {
    int tier = 0; // 0 primary, 1 secondary
    int rank = 0;
    QString others;       // the words that do not say p or its logarithm
    bool isNever = false; // taken where the user names it alone
    bool isLog = false;
    bool saysMinus = false; // of the logarithm
};
std::optional<PTitle> pTitle(const QString& title);

} // namespace plain

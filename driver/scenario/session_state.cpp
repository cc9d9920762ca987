#include "scenario/session_state.h"

#include "give_up.h"
#include "hfile.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QMap>
#include <cmath>
#include <cstdio>

namespace {

constexpr qsizetype listedEntries = 300;

QJsonValue exact(int number) {
    return number;
}

QJsonValue exact(double number) {
    if (std::isnan(number))
        return QStringLiteral("nan"); // whatever its sign
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", number);
    return QString::fromLatin1(text);
}

QJsonValue exact(const QString& text) {
    return text;
}

template <typename Number>
QString fingerprint(const QList<Number>& list) {
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(list.constData()),
                                list.size() * static_cast<qsizetype>(sizeof(Number)));
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
    return QStringLiteral("%1 %2").arg(list.size()).arg(QLatin1String(hash.toHex()));
}

QString fingerprint(const QStringList& list) {
    return QString::number(list.size());
}

template <typename Entry>
QJsonValue exact(const QList<Entry>& list) {
    if (list.size() > listedEntries)
        return fingerprint(list);
    QJsonArray array;
    for (const Entry& entry : list)
        array.append(exact(entry));
    return array;
}

template <std::size_t size>
QJsonValue exact(const char (&buffer)[size]) {
    return QString::fromLatin1(QByteArray(buffer, size).toHex());
}

// `names` are those of the values, separated by ", ".
template <typename... Values>
QJsonObject named(const char* names, const Values&... values) {
    const QStringList keys = QString::fromLatin1(names).split(QStringLiteral(", "));
    QJsonObject state;
    ((state[keys[state.size()]] = exact(values)), ...);
    return state;
}

} // namespace

#define NAMED(...) named(#__VA_ARGS__, __VA_ARGS__)

QJsonObject sessionState() {
    return NAMED(line, stripes, globaldisplay, globaltimes, selected_chromosome, save_counter,
                 file_index, click_times, stepOK, defaultname, filename, shortname, minX, maxX,
                 minY, maxY, realMinX, realMaxX, realMaxY, fwidth, fheight, xmargin, xmargin2,
                 ymargin, pixPerX, pixPerY, GLOBAL_pixPerX, GLOBAL_pixPerY, GLOBAL_minX,
                 GLOBAL_maxX, Pos_list, Value_list, Pos_list2, Value_list2, Start_index, End_index,
                 Start_value, End_value, Color_value, Tag);
}

void setSessionVariable(const QString& name, int value) {
    static const QMap<QString, int*> variables{
        {"save_counter", &save_counter},   {"minX", &minX},
        {"globaldisplay", &globaldisplay}, {"selected_chromosome", &selected_chromosome},
        {"file_index", &file_index},       {"click_times", &click_times}};
    int* const variable = variables.value(name);
    if (variable == nullptr)
        giveUp(QStringLiteral("no variable \"%1\"").arg(name));
    *variable = value;
}

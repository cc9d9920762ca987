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

} // namespace

#define NAMED(variable)                                                                            \
    { QStringLiteral(#variable), exact(variable) }

QJsonObject sessionState() {
    return {NAMED(line),
            NAMED(stripes),
            NAMED(globaldisplay),
            NAMED(globaltimes),
            NAMED(selected_chromosome),
            NAMED(save_counter),
            NAMED(file_index),
            NAMED(click_times),
            NAMED(stepOK),
            NAMED(defaultname),
            NAMED(filename),
            NAMED(shortname),
            NAMED(minX),
            NAMED(maxX),
            NAMED(minY),
            NAMED(maxY),
            NAMED(realMinX),
            NAMED(realMaxX),
            NAMED(realMaxY),
            NAMED(fwidth),
            NAMED(fheight),
            NAMED(xmargin),
            NAMED(xmargin2),
            NAMED(ymargin),
            NAMED(pixPerX),
            NAMED(pixPerY),
            NAMED(GLOBAL_pixPerX),
            NAMED(GLOBAL_pixPerY),
            NAMED(GLOBAL_minX),
            NAMED(GLOBAL_maxX),
            NAMED(Pos_list),
            NAMED(Value_list),
            NAMED(Pos_list2),
            NAMED(Value_list2),
            NAMED(Start_index),
            NAMED(End_index),
            NAMED(Start_value),
            NAMED(End_value),
            NAMED(Color_value),
            NAMED(Tag)};
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

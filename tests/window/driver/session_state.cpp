#include "driver/session_state.h"

#include "hfile.h"

#include <QCryptographicHash>
#include <QJsonArray>
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

void addCounters(QJsonObject& state) {
    state["line"] = exact(line);
    state["stripes"] = exact(stripes);
    state["globaldisplay"] = exact(globaldisplay);
    state["globaltimes"] = exact(globaltimes);
    state["selected_chromosome"] = exact(selected_chromosome);
    state["save_counter"] = exact(save_counter);
    state["file_index"] = exact(file_index);
    state["click_times"] = exact(click_times);
    state["stepOK"] = exact(stepOK);
    state["defaultname"] = exact(defaultname);
    state["filename"] = exact(filename);
    state["shortname"] = exact(shortname);
}

void addView(QJsonObject& state) {
    state["minX"] = exact(minX);
    state["maxX"] = exact(maxX);
    state["minY"] = exact(minY);
    state["maxY"] = exact(maxY);
    state["realMinX"] = exact(realMinX);
    state["realMaxX"] = exact(realMaxX);
    state["realMaxY"] = exact(realMaxY);
    state["fwidth"] = exact(fwidth);
    state["fheight"] = exact(fheight);
    state["xmargin"] = exact(xmargin);
    state["xmargin2"] = exact(xmargin2);
    state["ymargin"] = exact(ymargin);
    state["pixPerX"] = exact(pixPerX);
    state["pixPerY"] = exact(pixPerY);
    state["GLOBAL_pixPerX"] = exact(GLOBAL_pixPerX);
    state["GLOBAL_pixPerY"] = exact(GLOBAL_pixPerY);
    state["GLOBAL_minX"] = exact(GLOBAL_minX);
    state["GLOBAL_maxX"] = exact(GLOBAL_maxX);
}

void addLists(QJsonObject& state) {
    state["Pos_list"] = exact(Pos_list);
    state["Value_list"] = exact(Value_list);
    state["Pos_list2"] = exact(Pos_list2);
    state["Value_list2"] = exact(Value_list2);
    state["Start_index"] = exact(Start_index);
    state["End_index"] = exact(End_index);
    state["Start_value"] = exact(Start_value);
    state["End_value"] = exact(End_value);
    state["Color_value"] = exact(Color_value);
    state["Tag"] = exact(Tag);
}

} // namespace

QJsonObject sessionState() {
    QJsonObject state;
    addCounters(state);
    addView(state);
    addLists(state);
    return state;
}

#include "state.h"

namespace {

QRect rectangle(const QJsonArray& array) {
    return {array[0].toInt(), array[1].toInt(), array[2].toInt(), array[3].toInt()};
}

QStringList texts(const QJsonArray& array) {
    QStringList texts;
    for (const QJsonValue& value : array)
        texts.append(value.toString());
    return texts;
}

} // namespace

double State::number(const char* name) const {
    bool ok = false;
    const double number = m_object[QLatin1String(name)].toString().toDouble(&ok);
    if (!ok)
        qFatal("%s is no number", name);
    return number;
}

QByteArray State::bytes(const char* name) const {
    return QByteArray::fromHex(m_object[QLatin1String(name)].toString().toLatin1());
}

QList<int> State::integers(const char* name) const {
    QList<int> list;
    for (const QJsonValue& value : m_object[QLatin1String(name)].toArray())
        list.append(value.toInt());
    return list;
}

QList<double> State::numbers(const char* name) const {
    QList<double> list;
    for (const QString& text : texts(name))
        list.append(text.toDouble());
    return list;
}

QStringList State::texts(const char* name) const {
    return ::texts(m_object[QLatin1String(name)].toArray());
}

QJsonObject State::widget(const char* name) const {
    const QJsonObject widget = window()["widgets"].toObject()[QLatin1String(name)].toObject();
    if (widget.isEmpty())
        qFatal("no widget %s", name);
    return widget;
}

QRect State::geometry(const char* widgetName) const {
    return rectangle(widget(widgetName)["geometry"].toArray());
}

QPoint State::point(const char* member) const {
    const QJsonArray point = window()[QLatin1String(member)].toArray();
    return {point[0].toInt(-999), point[1].toInt(-999)};
}

QStringList State::memberTexts(const char* member) const {
    return ::texts(window()[QLatin1String(member)].toArray());
}

QString State::picture(const char* member) const {
    const QJsonObject picture = window()[QLatin1String(member)].toObject();
    return QStringLiteral("%1x%2 %3")
        .arg(picture["width"].toInt())
        .arg(picture["height"].toInt())
        .arg(picture["sha1"].toString());
}

QJsonObject State::unlabelled() const {
    QJsonObject object = m_object;
    object.remove("label");
    return object;
}

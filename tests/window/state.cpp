#include "state.h"

#include <QTest>

QJsonValue Record::operator[](const char* name) const {
    if (!contains(QLatin1String(name)))
        QTest::qFail(QByteArray("nothing is named \"") + name + '"', __FILE__, __LINE__);
    return value(QLatin1String(name));
}

QRect Record::rectangle(const char* name) const {
    const QJsonArray array = (*this)[name].toArray();
    return {array[0].toInt(), array[1].toInt(), array[2].toInt(), array[3].toInt()};
}

QStringList Record::texts(const char* name) const {
    QStringList texts;
    for (const QJsonValue& value : (*this)[name].toArray())
        texts.append(value.toString());
    return texts;
}

QByteArray State::bytes(const char* name) const {
    return QByteArray::fromHex(m_record[name].toString().toLatin1());
}

QList<int> State::integers(const char* name) const {
    QList<int> list;
    for (const QJsonValue& value : m_record[name].toArray())
        list.append(value.toInt());
    return list;
}

QList<double> State::numbers(const char* name) const {
    QList<double> list;
    for (const QString& text : texts(name))
        list.append(text.toDouble());
    return list;
}

QPoint State::point(const char* member) const {
    const QJsonArray point = window()[member].toArray();
    return {point[0].toInt(), point[1].toInt()};
}

QString State::picture(const char* member) const {
    const Record picture = window().record(member);
    return QStringLiteral("%1x%2 %3")
        .arg(picture["width"].toInt())
        .arg(picture["height"].toInt())
        .arg(picture["sha1"].toString());
}

QJsonObject State::unlabelled() const {
    QJsonObject object = m_record;
    object.remove("label");
    return object;
}

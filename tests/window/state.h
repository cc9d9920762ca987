#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QStringList>

// What the driver wrote of the program at one moment, typed again.
class State {
public:
    explicit State(QJsonObject object) : m_object(std::move(object)) {}

    // The session variables.
    int integer(const char* name) const { return m_object[QLatin1String(name)].toInt(-999); }
    double number(const char* name) const;
    QByteArray bytes(const char* name) const; // a whole buffer
    QList<int> integers(const char* name) const;
    QList<double> numbers(const char* name) const;
    QStringList texts(const char* name) const;

    // The window and its private members.
    QJsonObject window() const { return m_object["window"].toObject(); }
    QJsonObject widget(const char* name) const;
    bool isVisible(const char* widgetName) const { return widget(widgetName)["visible"].toBool(); }
    QString text(const char* widgetName) const { return widget(widgetName)["text"].toString(); }
    QRect geometry(const char* widgetName) const;
    QPoint point(const char* member) const;
    QStringList memberTexts(const char* member) const;
    QString picture(const char* member) const; // size and SHA-1
    QString log() const { return window()["log"].toString(); }

    QJsonObject dialog() const { return m_object["dialog"].toObject(); }
    QJsonObject object() const { return m_object; }

    // All but its label: to be compared with another moment's.
    QJsonObject unlabelled() const;

private:
    QJsonObject m_object;
};

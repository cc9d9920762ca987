#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QStringList>

// A JSON object in which a name that is not there fails the running test.
class Record : public QJsonObject {
public:
    explicit Record(QJsonObject object = {}) : QJsonObject(std::move(object)) {}

    QJsonValue operator[](const char* name) const;
    Record record(const char* name) const { return Record((*this)[name].toObject()); }
    QRect rectangle(const char* name) const;
    QStringList texts(const char* name) const;
};

// What the driver wrote of the program at one moment, typed again.
class State {
public:
    explicit State(QJsonObject object) : m_record(std::move(object)) {}

    // The session variables.
    int integer(const char* name) const { return m_record[name].toInt(); }
    double number(const char* name) const { return m_record[name].toString().toDouble(); }
    QByteArray bytes(const char* name) const; // a whole buffer
    QList<int> integers(const char* name) const;
    QList<double> numbers(const char* name) const;
    QStringList texts(const char* name) const { return m_record.texts(name); }

    // The window and its private members.
    Record window() const { return m_record.record("window"); }
    Record widget(const char* name) const { return window().record("widgets").record(name); }
    bool isVisible(const char* widgetName) const { return widget(widgetName)["visible"].toBool(); }
    QString text(const char* widgetName) const { return widget(widgetName)["text"].toString(); }
    QRect geometry(const char* widgetName) const {
        return widget(widgetName).rectangle("geometry");
    }
    QPoint point(const char* member) const;
    QStringList memberTexts(const char* member) const { return window().texts(member); }
    QString picture(const char* member) const; // size and SHA-1
    QString log() const { return window()["log"].toString(); }

    Record dialog() const { return m_record.record("dialog"); }
    Record object() const { return m_record; }

    // All but its label: to be compared with another moment's.
    QJsonObject unlabelled() const;

private:
    Record m_record;
};

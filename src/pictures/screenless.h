#pragma once

#include "failure.h"

#include <QGuiApplication>
#include <QStringList>
#include <optional>

// Qt's drawing of letters, without a display server or a home folder. What the environment says of
// displays, scales and styles is not looked at: a plot looks the same everywhere. Exists once, as
// long as somebody draws.
class Screenless {
public:
    Screenless();
    ~Screenless();
    Q_DISABLE_COPY_MOVE(Screenless)

    // Why no letter can be drawn here, if that is so.
    std::optional<Failure> failure() const;

    // What makes the letters look different from those elsewhere; empty where nothing does.
    QString warning() const;

private:
    std::optional<QGuiApplication> m_application;
    QStringList m_families; // of fonts
};

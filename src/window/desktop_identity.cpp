#include "desktop_identity.h"

#include <QGuiApplication>
#include <QIcon>

void setDesktopIdentity() {
    QGuiApplication::setDesktopFileName(QStringLiteral("org.pelmark.Pelmark"));
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/pelmark/%1.png").arg(size), QSize(size, size));
    QGuiApplication::setWindowIcon(icon);
}

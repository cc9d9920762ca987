#include "screenless.h"

#include <QByteArrayList>
#include <QFontDatabase>
#include <QStringList>

extern char** environ;

namespace {

// Styles, scale factors, other platforms: all that Qt takes from the environment, but where its
// plugins are.
void forgetQtVariables() {
    QByteArrayList names;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const QByteArray name = QByteArray(*variable).split('=').first();
        if (name.startsWith("QT_") && !name.endsWith("PLUGIN_PATH"))
            names.append(name);
    }
    for (const QByteArray& name : std::as_const(names))
        qunsetenv(name.constData());
}

QGuiApplication& prepared(std::optional<QGuiApplication>& application) {
    static int count = 1;
    static char name[] = "pelmark-tools";
    static char* words[] = {name, nullptr};
    forgetQtVariables();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LC_ALL", "C.UTF-8"); // Qt warns of other encodings
    return application.emplace(count, words);
}

} // namespace

Screenless::Screenless() {
    prepared(m_application);
}

Screenless::~Screenless() = default;

std::optional<Failure> Screenless::failure() const {
    if (!QFontDatabase::families().isEmpty())
        return std::nullopt;
    return Failure{StatusUnwritable,
                   QStringLiteral("no picture can be drawn: this machine has no fonts. Install "
                                  "Carlito (Debian: fonts-crosextra-carlito) or Calibri.")};
}

QString Screenless::warning() const {
    const QStringList families = QFontDatabase::families();
    if (families.contains(QLatin1String("Calibri")) || families.contains(QLatin1String("Carlito")))
        return {};
    return QStringLiteral("neither Calibri nor Carlito is installed, so the letters look different "
                          "from those of the window elsewhere. Install Carlito (Debian: "
                          "fonts-crosextra-carlito).");
}

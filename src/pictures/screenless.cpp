#include "screenless.h"

#include <QByteArrayList>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHashFunctions>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <unistd.h>

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

// What is known here is not worth a message: there is no display and no session.
class QuietStart {
public:
    QuietStart() : m_before(qInstallMessageHandler(handle)) {}
    ~QuietStart() { qInstallMessageHandler(m_before); }
    Q_DISABLE_COPY_MOVE(QuietStart)

private:
    static void handle(QtMsgType type, const QMessageLogContext& /*context*/,
                       const QString& message) {
        if (type == QtFatalMsg)
            static_cast<void>(std::fputs(qUtf8Printable(message + u'\n'), stderr));
    }

    QtMessageHandler m_before;
};

// The folder stands in for those of a session and a user while fonts are looked for. Of these, the
// one for Qt must be private, and the one for fontconfig be writable.
void setEnvironment(const QString& folder) {
    forgetQtVariables();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LC_ALL", "C.UTF-8"); // Qt warns of other encodings
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder));
    const QFileInfo home(qEnvironmentVariable("HOME"));
    if (!qEnvironmentVariableIsSet("XDG_CACHE_HOME") && !(home.isDir() && home.isWritable()))
        qputenv("XDG_CACHE_HOME", QFile::encodeName(folder));
}

} // namespace

Screenless::Screenless() {
    static int count = 1;
    static char name[] = "pelmark-tools";
    static char* words[] = {name, nullptr};
    // Qt writes the fonts of a document in the order of a hash table.
    QHashSeed::setDeterministicGlobalSeed();
    const QuietStart quietly;
    const QTemporaryDir folder;
    setEnvironment(folder.path());
    m_application.emplace(count, words);
    m_families = QFontDatabase::families();
}

Screenless::~Screenless() = default;

std::optional<Failure> Screenless::failure() const {
    // What Qt always lists, without a font behind it.
    const QStringList generic{"Monospace", "Sans Serif", "Serif"};
    if (!std::all_of(m_families.begin(), m_families.end(),
                     [&](const QString& family) { return generic.contains(family); }))
        return std::nullopt;
    return Failure{StatusUnwritable,
                   QStringLiteral("no picture can be drawn: this machine has no fonts. Install "
                                  "Carlito (Debian: fonts-crosextra-carlito) or Calibri.")};
}

QString Screenless::warning() const {
    if (m_families.contains(QLatin1String("Calibri")) ||
        m_families.contains(QLatin1String("Carlito")))
        return {};
    return QStringLiteral("neither Calibri nor Carlito is installed, so the letters look different "
                          "from those of the window elsewhere. Install Carlito (Debian: "
                          "fonts-crosextra-carlito).");
}

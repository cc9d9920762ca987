#include "screen/virtual_screen.h"

#include <QSize>
#include <csignal>
#include <cstdio>
#include <sys/prctl.h>

namespace {

constexpr int limitInMilliseconds = 60'000;

} // namespace

void endWithThisProcess(QProcess& process) {
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

VirtualScreen::~VirtualScreen() {
    m_server.terminate();
    m_server.waitForFinished(limitInMilliseconds);
}

bool VirtualScreen::start(QSize size) {
    const QString mode = QStringLiteral("%1x%2x24").arg(size.width()).arg(size.height());
    endWithThisProcess(m_server);
    // The server must outlive each of its clients: xdotool is one that comes and goes.
    m_server.start("Xvfb", {"-displayfd", "1", "-screen", "0", mode, "-dpi", "96", "-nolisten",
                            "tcp", "-noreset"});
    while (!m_display.endsWith('\n') && m_server.waitForReadyRead(limitInMilliseconds))
        m_display += m_server.readAllStandardOutput();
    if (!m_display.endsWith('\n')) {
        std::fprintf(stderr, "no virtual screen: %s\n%s\n", qPrintable(m_server.errorString()),
                     m_server.readAllStandardError().constData());
        return false;
    }
    m_display = ':' + m_display.trimmed();
    return true;
}

QByteArray xdotool(const QStringList& arguments) {
    QProcess process;
    process.start("xdotool", arguments);
    if (!process.waitForFinished(limitInMilliseconds))
        qWarning("xdotool: %s", qPrintable(process.errorString()));
    return process.readAllStandardOutput().trimmed();
}

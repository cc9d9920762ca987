#include "pages.h"

#include "tools_run.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace pages {

namespace {

constexpr int patience = 120'000; // ms

QProcessEnvironment environment() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"), QFileInfo(ToolsRun::program()).path() + u':' +
                                                   environment.value(QStringLiteral("PATH")));
    return environment;
}

} // namespace

QString sourcePath(const QString& name) {
    return QStringLiteral(PELMARK_SOURCE "/") + name;
}

QString textOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

QStringList found(const QString& text, const QString& pattern) {
    QStringList results;
    const QRegularExpression expression(pattern, QRegularExpression::MultilineOption);
    for (QRegularExpressionMatchIterator it = expression.globalMatch(text); it.hasNext();)
        results.append(it.next().captured(1));
    return results;
}

QString part(const QString& page, const QString& heading) {
    const QRegularExpression next(QStringLiteral("^#{2,%1} ").arg(heading.indexOf(u' ')),
                                  QRegularExpression::MultilineOption);
    const QString rest = page.section(u'\n' + heading + u'\n', 1);
    return rest.left(rest.indexOf(next));
}

QStringList examples(const QString& page) {
    return found(page, QStringLiteral("^```console\\n((?:(?!```).*\\n)+)```$"));
}

QString played(const QString& example, const QString& folder) {
    QProcess shell;
    shell.setWorkingDirectory(folder);
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.setProcessEnvironment(environment());
    QString output;
    for (const QString& command : found(example, QStringLiteral("^\\$ ((?:.*\\\\\\n)*.*)$"))) {
        shell.start(QStringLiteral("sh"), {QStringLiteral("-c"), command});
        if (!shell.waitForFinished(patience))
            qFatal("does not end: %s", qPrintable(command));
        output += QStringLiteral("$ ") + command + u'\n' + QString::fromUtf8(shell.readAll());
    }
    return output;
}

QStringList scenario(const QString& name) {
    QStringList steps;
    for (const QString& line :
         textOf(sourcePath(QStringLiteral("scripts/lib/scenarios/") + name)).split(u'\n')) {
        const bool isShot = line.startsWith(QLatin1String("shot "));
        if (isShot && QStringList{"choose", "fill"}.contains(steps.constLast().section(u' ', 0, 0)))
            continue;
        steps << (isShot ? QStringLiteral("dump ") + QFileInfo(line.mid(5)).completeBaseName()
                         : line);
    }
    return steps;
}

} // namespace pages

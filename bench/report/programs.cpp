#include "report/programs.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <vector>

extern char** environ;

namespace {

constexpr const char* screen =
    R"({"screens":[{"name":"screen","x":0,"y":0,"width":1920,"height":1080,)"
    R"("logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})";

QString workFolder;

[[noreturn]] void fail(const QString& message) {
    qCritical("%s", qPrintable(message));
    std::exit(2);
}

// For all programs that are started. The toolkit keeps a file dialog's settings; not the user's
// own.
void setEnvironment() {
    const QByteArray folder = QFile::encodeName(workFolder);
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + folder + "/screen.json");
    qputenv("QT_FONT_DPI", "96");
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("XDG_RUNTIME_DIR", folder);
    qputenv("XDG_CONFIG_HOME", folder);
}

Told numbersIn(const QByteArray& output) {
    Told told;
    for (const QByteArray& line : output.split('\n')) {
        const QList<QByteArray> words = line.split(' ');
        if (words.size() == 2)
            told[QString::fromUtf8(words[0])] = words[1].toDouble();
    }
    return told;
}

// A file that is at fault ends the program with status 1, and then it tells "end".
bool isRight(const QProcess& process, const Told& told) {
    return process.exitStatus() == QProcess::NormalExit &&
           (process.exitCode() == 0 || (process.exitCode() == 1 && told.contains("end")));
}

Told run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setWorkingDirectory(workFolder);
    process.start(program, arguments);
    if (!process.waitForFinished(-1))
        fail(program + QStringLiteral(": ") + process.errorString());
    const Told told = numbersIn(process.readAllStandardOutput());
    if (!isRight(process, told))
        fail(QStringLiteral("%1 %2 ended with status %3\n%4")
                 .arg(program, arguments.join(u' '))
                 .arg(process.exitCode())
                 .arg(QString::fromLocal8Bit(process.readAllStandardError())));
    return told;
}

bool spawnAndWait(const std::vector<char*>& words) {
    posix_spawn_file_actions_t silent;
    posix_spawn_file_actions_init(&silent);
    posix_spawn_file_actions_addopen(&silent, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&silent, 2, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    int status = -1;
    const bool isStarted =
        posix_spawnp(&process, words[0], &silent, nullptr, words.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&silent);
    return isStarted && waitpid(process, &status, 0) == process && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

} // namespace

Told runWindow(const QStringList& arguments) {
    return run(QStringLiteral(PELMARK_TIMED), arguments);
}

Told runParts(const QStringList& arguments) {
    return run(QStringLiteral(PELMARK_PARTS), arguments);
}

double secondsOf(const QStringList& command) {
    QList<QByteArray> texts;
    for (const QString& word : command)
        texts.append(word.toLocal8Bit());
    std::vector<char*> words;
    for (QByteArray& text : texts)
        words.push_back(text.data());
    words.push_back(nullptr);
    QElapsedTimer watch;
    watch.start();
    const bool isRight = spawnAndWait(words);
    return isRight ? static_cast<double>(watch.nsecsElapsed()) * 1e-9 : -1.0;
}

void setWorkFolder(const QString& folder) {
    workFolder = QDir(folder).absolutePath();
    QFile file(inWorkFolder("screen.json"));
    if (!QDir().mkpath(workFolder) || !file.open(QIODevice::WriteOnly) || file.write(screen) < 0 ||
        !file.flush())
        fail("cannot write in " + workFolder);
    QFile::setPermissions(workFolder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    setEnvironment();
}

QString inWorkFolder(const QString& name) {
    return QDir(workFolder).filePath(name);
}

#include "report/programs.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <vector>

extern char** environ;

namespace {

constexpr const char* screen =
    R"({"screens":[{"name":"screen","x":0,"y":0,"width":1920,"height":1080,)"
    R"("logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})";
constexpr const char* output = "output.txt"; // in the work folder
constexpr const char* errors = "errors.txt";

struct Process {
    int status = -1; // negative where it did not start or was killed
    double seconds = 0.0;
    double memory = 0.0;
};

Process spawnAndWait(char* const* words, const char* outputFile) {
    constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC;
    constexpr mode_t mode = 0600;
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, outputFile, flags, mode);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, errors, flags, mode);
    pid_t id = 0;
    int status = 0;
    rusage usage = {};
    QElapsedTimer watch;
    watch.start();
    const bool isRun = posix_spawnp(&id, words[0], &files, nullptr, words, environ) == 0 &&
                       wait4(id, &status, 0, &usage) == id && WIFEXITED(status);
    const double seconds = static_cast<double>(watch.nsecsElapsed()) * 1e-9;
    posix_spawn_file_actions_destroy(&files);
    return {isRun ? WEXITSTATUS(status) : -1, seconds,
            1024.0 * static_cast<double>(usage.ru_maxrss)};
}

Process execute(const QStringList& command, const char* outputFile) {
    QList<QByteArray> texts;
    for (const QString& word : command)
        texts.append(QFile::encodeName(word));
    std::vector<char*> words;
    for (QByteArray& text : texts)
        words.push_back(text.data());
    words.push_back(nullptr);
    return spawnAndWait(words.data(), outputFile);
}

[[noreturn]] void failBy(const QStringList& command, int status) {
    fail(QStringLiteral("%1: status %2\n%3")
             .arg(command.join(u' '))
             .arg(status)
             .arg(QString::fromLocal8Bit(contentOf(errors))));
}

// A line each: name, space, number.
Numbers numbersIn(const QByteArray& text) {
    Numbers numbers;
    for (const QByteArray& line : text.split('\n')) {
        const QList<QByteArray> words = line.split(' ');
        if (words.size() == 2)
            numbers[QString::fromUtf8(words[0])] = words[1].toDouble();
    }
    return numbers;
}

// The window exits with status 1 after a file at fault, and then reports "end".
Run measuring(const QStringList& command) {
    return [command] {
        const Process process = execute(command, output);
        Numbers numbers = numbersIn(contentOf(output));
        if (process.status != 0 && !(process.status == 1 && numbers.contains("end")))
            failBy(command, process.status);
        return numbers;
    };
}

} // namespace

void fail(const QString& message) {
    throw std::runtime_error(message.toStdString());
}

Run window(const QStringList& arguments) {
    return measuring(QStringList{PELMARK_TIMED} + arguments);
}

Run parts(const QStringList& arguments) {
    return measuring(QStringList{PELMARK_PARTS} + arguments);
}

Run command(const QStringList& words) {
    return [words] {
        const Process process = execute(words, "/dev/null");
        if (process.status != 0)
            failBy(words, process.status);
        return Numbers{{"seconds", process.seconds}, {"memory", process.memory}};
    };
}

QList<Series> inTurns(int rounds, const QList<Run>& runs) {
    QList<Series> all(runs.size());
    for (int round = 0; round < rounds; ++round)
        for (qsizetype i = 0; i < runs.size(); ++i) {
            const Numbers numbers = runs[i]();
            for (auto number = numbers.begin(); number != numbers.end(); ++number)
                all[i][number.key()].add(number.value());
        }
    return all;
}

bool succeeds(const QStringList& command) {
    return execute(command, "/dev/null").status == 0;
}

void enterWorkFolder(const QString& folder) {
    QFile file("screen.json");
    if (!QDir().mkpath(folder) || !QDir::setCurrent(folder) || !file.open(QIODevice::WriteOnly) ||
        file.write(screen) < 0 || !file.flush())
        fail("cannot write in " + folder);
    const QByteArray path = QFile::encodeName(QDir::currentPath());
    QFile::setPermissions(".", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + path + "/screen.json");
    qputenv("QT_FONT_DPI", "96");
    qputenv("LC_ALL", "C.UTF-8");
    // The runtime folder has to be private; Qt's file dialog must not touch the user's settings.
    qputenv("XDG_RUNTIME_DIR", path);
    qputenv("XDG_CONFIG_HOME", path);
}

QByteArray contentOf(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString inWorkFolder(const QString& name) {
    return QDir::current().absoluteFilePath(name);
}

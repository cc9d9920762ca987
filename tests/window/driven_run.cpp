#include "driven_run.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

const char* const logHeader = "Pelmark 0.1 by the Pelmark authors\n\n";

namespace {

constexpr int limitInMilliseconds = 300'000;
constexpr const char* knownWarning = "No such slot MyWidget::reSize()";
// Messages of Qt's offscreen platform about itself.
constexpr const char* platformWarning = "This plugin does not support propagateSizeHints()";

void write(const QString& path, const QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QProcessEnvironment environment(const QTemporaryDir& home) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("LC_ALL", "C.UTF-8");
    environment.insert("QT_FONT_DPI", "96");
    environment.insert("HOME", home.path());
    environment.insert("XDG_CONFIG_HOME", home.filePath("config"));
    environment.insert("XDG_RUNTIME_DIR", home.path());
    return environment;
}

} // namespace

DrivenRun::DrivenRun(const QString& program) : m_program(program) {
    if (!m_folder.isValid() || !m_home.isValid() || !QDir(m_folder.path()).mkdir("work"))
        qFatal("no temporary folder");
}

void DrivenRun::setEnvironment(const QString& variable, const QString& value) {
    m_environment[variable] = value;
}

void DrivenRun::setScreen(QSize size) {
    const QJsonObject screen{{"name", "screen"},
                             {"x", 0},
                             {"y", 0},
                             {"width", size.width()},
                             {"height", size.height()},
                             {"logicalDpi", 96},
                             {"logicalBaseDpi", 96},
                             {"dpr", 1}};
    const QString path = m_home.filePath("screen.json");
    write(path, QJsonDocument(QJsonObject{{"screens", QJsonArray{screen}}}).toJson());
    setEnvironment("QT_QPA_PLATFORM", "offscreen:configfile=" + path);
}

void DrivenRun::addFile(const QString& name, const QByteArray& content) const {
    write(path(name), content);
}

void DrivenRun::addCopy(const QString& name, const QString& original) const {
    if (!QFile::copy(original, path(name)))
        qFatal("cannot copy %s", qPrintable(original));
}

void DrivenRun::start() {
    QProcessEnvironment variables = environment(m_home);
    for (auto variable = m_environment.cbegin(); variable != m_environment.cend(); ++variable)
        variables.insert(variable.key(), variable.value());
    QProcess process;
    process.setProcessEnvironment(variables);
    process.setWorkingDirectory(path(m_workingFolder));
    process.start(m_program, QStringList());
    const bool hasEnded = process.waitForFinished(limitInMilliseconds);
    const bool isNormal = hasEnded && process.exitStatus() == QProcess::NormalExit;
    m_exitStatus = isNormal ? process.exitCode() : -1;
    m_standardOutput = process.readAllStandardOutput();
    m_standardError = process.readAllStandardError();
    if (!hasEnded)
        m_standardError += "neither started nor ended: " + process.errorString().toUtf8();
}

void DrivenRun::play(const QStringList& script) {
    write(m_home.filePath("script"), script.join(u'\n').toUtf8());
    QFile::remove(m_home.filePath("states"));
    setEnvironment("PELMARK_DRIVER_SCRIPT", m_home.filePath("script"));
    setEnvironment("PELMARK_DRIVER_STATES", m_home.filePath("states"));
    start();
    readStates();
}

bool DrivenRun::playTo(int exitStatus, const QStringList& script) {
    play(script);
    const bool right =
        QTest::qCompare(m_exitStatus, exitStatus, "exit status", "expected", __FILE__, __LINE__) &&
        QTest::qCompare(complaints(), QStringList(), "standard error", "expected", __FILE__,
                        __LINE__);
    if (!right)
        qWarning("%s", m_standardError.constData());
    return right;
}

bool DrivenRun::playOn(const QByteArray& data, const QStringList& script) {
    addFile("data.txt", data);
    return playTo(0, QStringList{"open data.txt"} + script + QStringList{"click exitButton"});
}

void DrivenRun::readStates() {
    m_states.clear();
    for (const QByteArray& line : read(m_home.filePath("states")).split('\n'))
        if (!line.isEmpty())
            m_states.append(QJsonDocument::fromJson(line).object());
}

QStringList DrivenRun::complaints() const {
    QStringList lines;
    for (const QString& line : QString::fromUtf8(m_standardError).split(u'\n', Qt::SkipEmptyParts))
        if (!line.contains(QLatin1String(knownWarning)) && line != QLatin1String(platformWarning))
            lines.append(line);
    return lines;
}

bool DrivenRun::hasKnownWarning() const {
    return m_standardError.count(knownWarning) == 1;
}

State DrivenRun::state(const QString& label) const {
    for (qsizetype i = m_states.size() - 1; i >= 0; --i)
        if (m_states[i]["label"].toString() == label)
            return State(m_states[i]);
    const QByteArray message = "no state \"" + label.toUtf8() + "\": " + m_standardError;
    QTest::qFail(message, __FILE__, __LINE__);
    return State({});
}

QStringList DrivenRun::labels() const {
    QStringList labels;
    for (const QJsonObject& state : m_states)
        labels.append(state["label"].toString());
    return labels;
}

QString DrivenRun::path(const QString& name) const {
    return m_folder.filePath("work/" + name);
}

bool DrivenRun::exists(const QString& name) const {
    return QFileInfo::exists(path(name));
}

QByteArray DrivenRun::content(const QString& name) const {
    return read(path(name));
}

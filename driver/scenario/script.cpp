#include "scenario/script.h"

#include "give_up.h"
#include "places.h"

#include <QFile>
#include <QMap>

namespace {

int toInt(const QString& word) {
    bool ok = false;
    const int number = word.toInt(&ok);
    if (!ok)
        giveUp(QStringLiteral("\"%1\" is not a whole number").arg(word));
    return number;
}

double toDouble(const QString& word) {
    bool ok = false;
    const double number = word.toDouble(&ok);
    if (!ok)
        giveUp(QStringLiteral("\"%1\" is not a number").arg(word));
    return number;
}

} // namespace

QStringList Command::words() const {
    return rest.split(u' ', Qt::SkipEmptyParts);
}

QString Command::word(qsizetype index) const {
    if (index >= words().size())
        giveUp(QStringLiteral("word %1 is missing").arg(index + 2));
    return words()[index];
}

int Command::number(qsizetype index) const {
    return toInt(word(index));
}

double Command::real(qsizetype index) const {
    return toDouble(word(index));
}

QPoint Command::point(qsizetype firstWord) const {
    return {number(firstWord), number(firstWord + 1)};
}

QPoint Command::place(qsizetype firstWord) const {
    const QString x = word(firstWord);
    const qsizetype at = x.lastIndexOf(u'@');
    const int position =
        at < 0 ? toInt(x) : places::genomeCoordinate(x.left(at), toDouble(x.mid(at + 1)));
    return places::of(position, real(firstWord + 1));
}

Qt::MouseButton Command::button(qsizetype lastWord) const {
    static const QMap<QString, Qt::MouseButton> buttons{
        {"left", Qt::LeftButton}, {"right", Qt::RightButton}, {"middle", Qt::MiddleButton}};
    const QString which = words().value(lastWord, QStringLiteral("left"));
    if (!buttons.contains(which))
        giveUp(QStringLiteral("no mouse button \"%1\"").arg(which));
    return buttons[which];
}

QString Command::step() const {
    return QStringLiteral("script line %1: %2 %3").arg(lineNumber).arg(name, rest).trimmed();
}

QList<Command> readScript(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        giveUp(QStringLiteral("cannot read the script \"%1\"").arg(fileName));
    QList<Command> commands;
    int lineNumber = 0;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        ++lineNumber;
        if (!line.isEmpty() && !line.startsWith(u'#'))
            commands.append({line.section(u' ', 0, 0), line.section(u' ', 1), lineNumber});
    }
    return commands;
}

#include "driver/script.h"

#include "driver/give_up.h"

#include <QFile>

QStringList Command::words() const {
    return rest.split(u' ', Qt::SkipEmptyParts);
}

QString Command::word(qsizetype index, const QString& otherwise) const {
    return words().value(index, otherwise);
}

int Command::number(qsizetype index) const {
    bool ok = false;
    const int number = word(index).toInt(&ok);
    if (!ok)
        giveUp(lineNumber, QStringLiteral("no number in \"%1 %2\"").arg(name, rest));
    return number;
}

QPoint Command::point(qsizetype firstWord) const {
    return {number(firstWord), number(firstWord + 1)};
}

QList<Command> parseScript(const QString& text) {
    QList<Command> commands;
    int lineNumber = 0;
    for (const QString& line : text.split(u'\n')) {
        ++lineNumber;
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        commands.append({line.section(u' ', 0, 0), line.section(u' ', 1), lineNumber});
    }
    return commands;
}

QList<Command> readScript(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        giveUp(0, QStringLiteral("cannot read the script \"%1\"").arg(fileName));
    return parseScript(QString::fromUtf8(file.readAll()));
}

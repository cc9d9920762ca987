// Usage: formats_table PAGE
// Prints the page with its table of formats made anew: what pelmark-tools makes of each table in
// tests/data/formats that a tool or an archive writes.

#include "format_cases.h"
#include "pages.h"
#include "tools_run.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstdio>

namespace {

const QString firstLine =
    QStringLiteral("<!-- The table of formats: scripts/formats writes it. -->\n");
const QString lastLine = QStringLiteral("<!-- The end of the table of formats. -->\n");
const QStringList command{"prepare", "FILE", "-o", "OUT.txt", "--json", "-"};

// Those that make a marker.
const QStringList roles{"chromosome", "position", "chromosome and position", "p", "log of p"};

QString code(const QString& text) {
    QString escaped = text;
    return u'`' + escaped.replace(u'|', QLatin1String("\\|")) + u'`';
}

QString columnsOf(const QJsonObject& report) {
    QStringList titles;
    for (const auto& each : report["columns"].toArray()) {
        const QJsonObject column = each.toObject();
        if (!roles.contains(column["role"].toString()))
            continue;
        const QString title = column["title"].toString();
        const QString text = title.isEmpty()
                                 ? QStringLiteral("column %1").arg(column["column"].toInt())
                                 : code(title);
        if (!titles.contains(text))
            titles << text;
    }
    return titles.join(QLatin1String(", "));
}

// The options that decide, or else the reason why none does.
QString choiceOf(const QString& message) {
    QStringList options;
    for (const QString& decides :
         pages::found(message, "^    pelmark-tools " + command.join(u' ') + " (.*)$"))
        options << code(decides);
    return options.isEmpty() ? message.section(QLatin1String(": "), 2).section(u'\n', 0, 0)
                             : options.join(QLatin1String(" or "));
}

QString verdictOf(const ToolsRun& run) {
    const QJsonDocument report =
        QJsonDocument::fromJson(run.run({"check", "FILE", "--json", "-"}).out);
    return report["files"][0]["verdict"].toString().remove("-but");
}

QString rowOf(const FormatCase& format) {
    const ToolsRun run;
    run.write("FILE", format.file);
    const ToolsRun::Result result = run.run(command + format.arguments);
    const QString columns = columnsOf(QJsonDocument::fromJson(result.out).object());
    const QString how = result.status != 0           ? choiceOf(QString::fromUtf8(result.error))
                        : format.arguments.isEmpty() ? QString()
                                                     : code(format.arguments.join(u' '));
    return QStringLiteral("| %1 | %2 | %3 | %4 |\n").arg(format.name, verdictOf(run), columns, how);
}

QString table() {
    QString text = QStringLiteral(
        "| Format | The window | Columns of a marker | Options |\n|---|---|---|---|\n");
    for (const char* file : {"tools", "archives"})
        for (const QString& each :
             formatCases(QStringLiteral(PELMARK_TEST_DATA "/formats/%1.txt").arg(file)))
            text += rowOf(FormatCase(each));
    return text;
}

} // namespace

int main(int, char** arguments) {
    const QString page = pages::textOf(QString::fromLocal8Bit(arguments[1]));
    const QStringList parts{page.section(firstLine, 0, 0), page.section(lastLine, 1)};
    std::fputs(qPrintable(parts[0] + firstLine + table() + lastLine + parts[1]), stdout);
}

#include "report/tools_runs.h"

#include "report/scan_file.h"

#include <QFile>

Run tools(const QStringList& arguments) {
    return command(QStringList(QStringLiteral(PELMARK_TOOLS)) + arguments);
}

Run pipeline(const QString& shell) {
    return command({"bash", "-o", "pipefail", "-c", shell});
}

QStringList savedTables(const QString& file) {
    const QString prepared = inWorkFolder("prepared.txt");
    tools({"prepare", file, "-o", prepared, "--quiet"})();
    QStringList tables;
    for (const char* end : {"head", "tail"}) {
        const QString table = inWorkFolder(QLatin1String(end) + QLatin1String(".txt"));
        pipeline(
            QStringLiteral("{ head -n 1 '%1'; awk -v label=\"$(sed 1d '%1' | %2 -n 1 | cut -f 1)\" "
                           "'NR > 1 && $1 == label' '%1' | head -n 1000; } | cut -f 1-4 > '%3' "
                           "|| true")
                .arg(prepared, QLatin1String(end), table))();
        tables << table;
    }
    QFile::remove(prepared);
    return tables;
}

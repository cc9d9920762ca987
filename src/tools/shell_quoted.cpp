#include "shell_quoted.h"

#include <QRegularExpression>

QString shellQuoted(const QString& word) {
    static const QRegularExpression safe(QStringLiteral("\\A[A-Za-z0-9_@%+=:,./-]+\\z"));
    if (safe.match(word).hasMatch())
        return word;
    QString quoted = word;
    quoted.replace(QLatin1Char('\''), QLatin1String("'\\''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

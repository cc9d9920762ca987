#include "monkey_choices.h"

#include "support/random.h"

#include <QDir>
#include <QStringList>

namespace choices {

// Mostly one that can be read: a fault ends the run.
QString dataFile(Random& random) {
    static const QStringList readable{"real.txt", "real.txt", "odd.txt", "equal.csv",
                                      "extreme.txt"};
    const QStringList files =
        QDir::current().entryList({QStringLiteral("*.txt"), QStringLiteral("*.csv")}, QDir::Files);
    return random.oneIn(12) ? random.oneOf(files) : random.oneOf(readable);
}

// To save over a data file that is open, or over another one, is allowed.
QString tableName(Random& random) {
    static const QStringList names{
        "saved",
        "saved",
        "saved.txt",
        "a.b",
        "Table.TXT",
        ".hidden",
        "two words",
        "../start/above",
        "",
        " ",
        "real",
        "random.txt",
        QString(60, u'n'),
        QString(100, u'\u00e9'),
        QString::fromUtf8("染色體"),
        "quoted\"<b>name",
    };
    static const QStringList unwritable{"no/such/folder", "folder", QString(260, u'n')};
    return random.oneIn(20) ? random.oneOf(unwritable) : random.oneOf(names);
}

QString rangeText(Random& random) {
    static const QStringList texts{
        "",  "1000-2000",  "0-2147483647", "-5",    "5-", "1-2-3",
        "x", "2147483648", " 7 ",          "+1-+9", "0",
    };
    return random.oneIn(3) ? QString::number(random.between(-10, 200'000'000))
                           : random.oneOf(texts);
}

} // namespace choices

#include "prepare_words.h"

#include "column_option.h"

#include <QJsonArray>

namespace {

QString roleName(Role role) {
    switch (role) {
    case Role::Chromosome:
        return QStringLiteral("chromosome");
    case Role::Position:
        return QStringLiteral("position");
    case Role::Joined:
        return QStringLiteral("chromosome and position");
    case Role::PValue:
        return QStringLiteral("p");
    case Role::LogP:
        return QStringLiteral("log of p");
    case Role::Name:
        return QStringLiteral("name");
    case Role::Test:
        return QStringLiteral("test");
    case Role::Trait:
        return QStringLiteral("trait");
    case Role::Z:
        return QStringLiteral("z");
    case Role::Beta:
        return QStringLiteral("beta");
    case Role::StandardError:
        return QStringLiteral("standard error");
    }
    Q_UNREACHABLE();
}

// What was changed in the rows that were written: how often, and in words.
struct Change {
    const char* name;
    qint64 count;
    QString text;
};

QList<Change> changes(const PreparedTable& table) {
    const PrepareReport& report = table.report;
    const QString smallest = QString::fromUtf8(report.smallestP);
    const QList<Change> all{
        {"bounds", report.bounds,
         QStringLiteral("p given as a bound, such as <2e-16: written as it")},
        {"rounded_to_one", report.roundedToOne, QStringLiteral("p slightly above 1: written as 1")},
        {"below_smallest", report.belowSmallest,
         QStringLiteral(
             "p below the smallest number that the window reads: written as "
             "4.94065645841247e-324, with the true -log10 p beside it; the strongest has ") +
             QString::fromUtf8(report.strongest)},
        {"zero_by_log", report.zeroByLog,
         QStringLiteral("p of 0: taken from the column of its log")},
        {"zero_by_smallest", report.zeroBySmallest,
         QStringLiteral("p of 0: written as %1, the smallest p above 0 in the table")
             .arg(smallest)},
        {"other_spellings", report.otherSpellings,
         QStringLiteral("chromosomes spelled in another way than before: written as before")}};
    QList<Change> made;
    for (const Change& change : all)
        if (change.count > 0)
            made.append(change);
    return made;
}

QString placeOf(const QStringList& inputs, const InputLine& where) {
    return inputs.size() == 1
               ? QString::number(where.line)
               : inputs.value(where.input) + QLatin1Char(':') + QString::number(where.line);
}

QString notesText(const char* heading, const QList<RoleNote>& notes) {
    QString text;
    for (const RoleNote& note : notes)
        text += QStringLiteral("  %1: %2: %3\n")
                    .arg(roleName(note.role), columnText(note.title, note.column), note.why);
    return text.isEmpty() ? text : QLatin1String(heading) + QLatin1Char('\n') + text;
}

QString chromosomesText(const QList<ChromosomeCount>& chromosomes) {
    constexpr qsizetype shown = 100;
    QStringList texts;
    for (const ChromosomeCount& chromosome : chromosomes.mid(0, shown))
        texts.append(QStringLiteral("%1 (%2)").arg(QString::fromUtf8(chromosome.name),
                                                   QString::number(chromosome.markers)));
    if (chromosomes.size() > shown)
        texts.append(QStringLiteral("and %1 more").arg(chromosomes.size() - shown));
    return QStringLiteral("Chromosomes: %1: %2\n")
        .arg(chromosomes.size())
        .arg(texts.join(QLatin1String(", ")));
}

QJsonArray notesJson(const QList<RoleNote>& notes) {
    QJsonArray array;
    for (const RoleNote& note : notes)
        array.append(QJsonObject{{"role", roleName(note.role)},
                                 {"column", note.column + 1},
                                 {"title", QString::fromUtf8(note.title)},
                                 {"why", note.why}});
    return array;
}

} // namespace

QString columnsText(const PrepareReport& report) {
    const ColumnChoice& columns = report.table.columns;
    QString text = notesText("Columns", columns.notes) + notesText("Not chosen", columns.others);
    for (const QString& remark : columns.remarks + report.remarks)
        text += QLatin1String("Note: ") + remark + QLatin1Char('\n');
    if (!report.keptTest.isEmpty())
        text += QStringLiteral("Test kept: %1\n").arg(QString::fromUtf8(report.keptTest));
    return text;
}

QJsonObject columnsJson(const PrepareReport& report) {
    const ColumnChoice& columns = report.table.columns;
    return {{"columns", notesJson(columns.notes)},
            {"not_chosen", notesJson(columns.others)},
            {"remarks", QJsonArray::fromStringList(columns.remarks + report.remarks)},
            {"kept_test", QString::fromUtf8(report.keptTest)}};
}

QString droppedText(const PrepareReport& report, const QStringList& inputs, const char* heading) {
    QString text;
    for (int reason = 0; reason < dropReasonCount; ++reason) {
        const Dropped& dropped = report.dropped[static_cast<size_t>(reason)];
        if (dropped.count == 0)
            continue;
        QStringList lines;
        for (const InputLine& where : dropped.firstLines)
            lines.append(placeOf(inputs, where));
        if (dropped.count > lines.size())
            lines.append(QStringLiteral("..."));
        text += QStringLiteral("  %1: %2 (line %3)\n")
                    .arg(nameOf(static_cast<DropReason>(reason)))
                    .arg(dropped.count)
                    .arg(lines.join(QLatin1String(", ")));
    }
    return text.isEmpty() ? text : QLatin1String(heading) + QLatin1Char('\n') + text;
}

QJsonObject droppedJson(const PrepareReport& report, const QStringList& inputs) {
    QJsonObject object;
    for (int reason = 0; reason < dropReasonCount; ++reason) {
        const Dropped& dropped = report.dropped[static_cast<size_t>(reason)];
        if (dropped.count == 0)
            continue;
        QJsonArray first;
        for (const InputLine& where : dropped.firstLines)
            first.append(QJsonObject{{"file", inputs.value(where.input)}, {"line", where.line}});
        object[nameOf(static_cast<DropReason>(reason))] =
            QJsonObject{{"count", dropped.count}, {"first", first}};
    }
    return object;
}

QString rowsText(const PreparedTable& table) {
    const QList<Change> made = changes(table);
    QString text = made.isEmpty() ? QString() : QStringLiteral("Changed\n");
    for (const Change& change : made)
        text += QStringLiteral("  %1: %2\n").arg(change.count).arg(change.text);
    return text + droppedText(table.report, table.inputs, "Dropped");
}

QByteArray textOf(const PreparedTable& table) {
    const PrepareReport& report = table.report;
    QString text = QStringLiteral("%1: %2 rows: %3 %4, %5 dropped\n")
                       .arg(table.inputs.join(QLatin1String(", ")), QString::number(report.rows),
                            QString::number(report.written),
                            table.outcome.isEmpty() ? QLatin1String("written to ") + table.output
                                                    : table.outcome,
                            QString::number(report.rows - report.written));
    text += columnsText(report) + chromosomesText(report.chromosomes);
    text += report.wasInOrder ? QStringLiteral("Order: as in the file\n")
                              : QStringLiteral("Order: sorted by chromosome and position\n");
    return (text + rowsText(table)).toUtf8();
}

QJsonObject jsonOf(const PreparedTable& table) {
    const PrepareReport& report = table.report;
    QJsonObject changed;
    for (const Change& change : changes(table))
        changed[QLatin1String(change.name)] = change.count;
    QJsonArray chromosomes;
    for (const ChromosomeCount& chromosome : report.chromosomes)
        chromosomes.append(QJsonObject{{"name", QString::fromUtf8(chromosome.name)},
                                       {"markers", chromosome.markers}});
    QJsonObject json = columnsJson(report);
    json["version"] = 1;
    json["command"] = "prepare";
    json["inputs"] = QJsonArray::fromStringList(table.inputs);
    json["output"] = table.output;
    json["rows"] = report.rows;
    json["written"] = report.written;
    json["chromosomes"] = chromosomes;
    json["was_in_order"] = report.wasInOrder;
    json["changed"] = changed;
    json["strongest_neg_log10_p"] = QString::fromUtf8(report.strongest);
    json["dropped"] = droppedJson(report, table.inputs);
    return json;
}

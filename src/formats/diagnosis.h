#pragma once

#include "column_comparison.h"
#include "finding.h"
#include "refusal.h"
#include "table_format.h"
#include "window_reading.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>
#include <string_view>
#include <variant>

enum class Verdict { Opens, OpensBut, Misreads, EndsAtLine, Refuses };

// What is known of a file apart from what the window reads in it.
struct FileFacts {
    QString path;                // as the user wrote it, absolute or not; empty for a pipe
    qsizetype pathBytes = 0;     // of the absolute path
    QString packing;             // as UnpackedDevice has it: "plain", "gzip" ...
    QString foreignKind;         // as foreignKind() has it
    bool hasLoneReturns = false; // a carriage return alone ends its lines
    QByteArray head; // its first lines, unpacked: UTF-8, whole, without carriage returns
};

struct Diagnosis {
    Verdict verdict = Verdict::Opens;
    qint64 endsAtLine = 0;
    WindowReading reading;
    std::variant<Understanding, Refusal> right; // the table as `prepare` takes it
    std::optional<Refusal> leftToChoose;        // why `prepare` refuses it all the same
    std::optional<ComparedColumns> columns;     // where both the window and `prepare` have some
    QList<QString> missingRoles; // "chromosome", "position", "p": no title says them to the window
    QList<Finding> findings;     // the gravest first
};

// Says what the window makes of a file, and what there is to know about that.
Diagnosis diagnose(const FileFacts& file, WindowReading reading,
                   std::variant<Understanding, Refusal> right);

enum class Severity { Error, Warning };
Severity severity(FindingCode code);

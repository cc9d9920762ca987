#pragma once

#include "prepare_options.h"
#include "refusal.h"

#include <QByteArray>
#include <QList>
#include <string_view>
#include <variant>

// What parts the fields of a line. Spaces: runs of them count as one. WideSpaces: runs of two or
// more. WhiteSpace: runs of tabs and spaces.
enum class Separator { Tab, Comma, Semicolon, Spaces, WideSpaces, WhiteSpace };

struct TableFormat {
    Separator separator = Separator::Tab;
    bool quoted = false;       // fields may stand in double quotes
    bool decimalComma = false; // a comma is the decimal point
    bool hasComments = true;   // lines that begin with # are none of the table's
    qint64 headerLine = 0;     // from 1; 0 without titles
    QList<QByteArray> titles;  // as they stand, without quotes; empty without titles
    qint64 firstDataLine = 1;  // from 1
};

enum class Role {
    Chromosome,
    Position,
    Joined, // chromosome and position together
    PValue,
    LogP,
    Name,
    Test,
    Trait,
    Z,
    Beta,
    StandardError
};

// A column chosen for a role, and why, for the report.
struct RoleNote {
    Role role;
    int column; // from 0
    QByteArray title;
    QString why; // "the only title that says p", "named by --p" ...
};

struct ColumnChoice {
    int chromosome = -1; // from 0; -1 for none
    int position = -1;
    int joined = -1;                    // holds chromosome and position together, as 1:15791:C:T
    int p = -1;                         // holds p-values
    int logP = -1;                      // the paired logarithm of p, or the only column
    PScale logScale = PScale::NegLog10; // of logP (or of p where --p-is says so: then p is -1)
    int name = -1;
    int test = -1;
    QList<int> traits; // columns that may part the table into several scans
    int info = -1; // texts with LOG10P=number among them, which hold where p is too small to print
    int z = -1, beta = -1, standardError = -1; // where p is computed from effects
    int format = -1; // VCF: the FORMAT column; logP is then the sample's column, in subfield LP
    bool isChromosomeNamed = false; // by the user, whatever the column holds
    bool isPrepared = false;        // a prepared or saved table: its texts are copied as they stand
    QByteArray chromosomeValue;     // where the user gave it
    QList<RoleNote> notes;
    QList<RoleNote> others; // candidates that were not chosen, and why not
    QList<QString> remarks; // anything else that the user should read

    // How many fields a line must have to be a row.
    size_t fieldsNeeded() const {
        const bool isFoundByName = position < 0 && joined < 0;
        return 1 + static_cast<size_t>(
                       std::max({0, isFoundByName ? name : 0, chromosome, position, joined, p, logP,
                                 test, z, beta, standardError, format}));
    }
};

struct Understanding {
    TableFormat format;
    ColumnChoice columns;
};

// Finds out how a table is laid out and which columns hold what, from its first lines: UTF-8, whole
// lines, no carriage returns; at most 1,000 lines before the header and 11,000 after it are looked
// at. `isWhole` says that the table ends there.
std::variant<Understanding, Refusal> understand(std::string_view head, bool isWhole,
                                                const PrepareOptions& options);

// Splits a line into its fields, without their quotes and the spaces around them. An empty line has
// no fields where runs of spaces part them, else one. A quote that nothing closes is text. The
// views point into `line` or, where a doubled quote was undone, into `scratch`.
void splitLine(std::string_view line, const TableFormat& format, QList<std::string_view>& fields,
               QByteArray& scratch);

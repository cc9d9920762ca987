#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>
#include <utility>

// What a p column holds.
enum class PScale { P, NegLog10, Log10, Ln };

// Effect columns that p is computed from, where the user asks for it.
enum class PSource { Column, Z, BetaAndError };

enum class ZeroP { Smallest, Drop, Fail };
enum class ChromosomeNames { Keep, Plain, Chr };

// What a user can decide about a table. A column is a title or a number from 1, as UTF-8.
struct PrepareOptions {
    std::optional<QByteArray> chromosome;
    std::optional<QByteArray> position;
    std::optional<QByteArray> p;
    std::optional<QByteArray> name;
    std::optional<QByteArray> test;     // the column that says which test a row is of
    std::optional<QByteArray> testName; // the test to keep
    std::optional<PScale> pScale;
    PSource pSource = PSource::Column;
    std::optional<QByteArray> z; // the columns of pSource, where its titles do not say them
    std::optional<QByteArray> beta;
    std::optional<QByteArray> standardError;
    std::optional<QByteArray> chromosomeValue;      // of all rows, in place of a column
    QList<std::pair<QByteArray, QByteArray>> where; // keep the rows where the column has the value
    std::optional<QByteArray> sample;               // of a VCF with several
    bool noHeader = false;
    bool zeroBased = false;
    bool authorBuild = false; // the author's positions rather than harmonised ones
    ZeroP zeroP = ZeroP::Smallest;
    ChromosomeNames chromosomeNames = ChromosomeNames::Keep;
    qint64 minMarkers = 1; // of a chromosome, to be kept
    bool allColumns = false;
    bool lineNumbers = false;
    qint64 memory = qint64{1} << 30; // bytes for sorting, before temporary files are used
    QString positionsFile;           // chromosome and position by marker name
};

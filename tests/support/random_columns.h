#pragma once

#include "prepare_options.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <functional>

class Random;

// The columns of a random table: titles, and for each the text of one field after the other.
class RandomColumns {
public:
    using Field = std::function<QString(Random&)>;
    struct Column {
        QString title;
        Field field;
    };

    // One text in `oddness` is odd. Options without which the table could not be prepared are set,
    // and where its rows have no place of their own, a table of positions is written.
    RandomColumns(Random& random, int oddness, PrepareOptions& options, QByteArray& positions);
    RandomColumns(const RandomColumns&) = delete;
    RandomColumns& operator=(const RandomColumns&) = delete;
    ~RandomColumns() = default;

    const QList<Column>& all() const { return m_columns; }
    bool areOfVcf() const { return m_areOfVcf; }
    bool areOfPreparedTable() const { return m_areOfPreparedTable; }

    // Positions and names begin again.
    void startFile() { m_position = m_name = 0; }

private:
    Field chromosomes();
    Field positions();
    Field pValues();
    Field logs(double sign, bool isPaired);
    Field names(const QStringList& prefixes);
    Field joined();
    Field oneOf(const QStringList& texts);
    void add(const QString& title, const Field& field) { m_columns.append({title, field}); }

    void addPlace();
    void addSecondPlace();
    void addJoined();
    void addP();
    void addEffects();
    void makeVcf();
    void addNamesAlone();
    void makePrepared();
    void makeColumns();

    Random& m_random;
    const int m_oddness;
    PrepareOptions& m_options;
    QByteArray& m_positions;
    QList<Column> m_columns;
    bool m_areOfVcf = false;
    bool m_areOfPreparedTable = false;
    QString m_current; // chromosome
    QString m_place;   // the last position
    QString m_p;
    int m_position = 0;
    int m_name = 0;
};

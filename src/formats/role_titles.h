#pragma once

#include "place_columns.h"

// True where one of the titles says a chromosome, a position, a marker's name or p.
bool saysChromosome(const QList<QByteArray>& titles);
bool saysPosition(const QList<QByteArray>& titles);
bool saysName(const QList<QByteArray>& titles);
bool saysPValue(const QList<QByteArray>& titles);

// True where the titles are those that PLINK writes, or those of GWAS-SSF.
bool areOfPlink(const QList<QByteArray>& titles);
bool areOfSsf(const QList<QByteArray>& titles);

// Chooses the column of marker names; there may be none.
void chooseName(const HeadTable& table, const NamedColumns& named, ColumnChoice& choice);

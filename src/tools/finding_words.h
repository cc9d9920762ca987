#pragma once

#include "diagnosis.h"

#include <QLatin1String>
#include <QString>

// "p-not-a-number" and so on: the name by which reports know a kind of finding.
QLatin1String nameOf(FindingCode code);

// What is wrong at one place, and what to do.
QString sentence(const Finding& finding, const Place& place, const Diagnosis& diagnosis);

// "opens", "ends" ... for programs; and the whole verdict for people.
QLatin1String nameOf(Verdict verdict);
QString sentence(const Diagnosis& diagnosis);

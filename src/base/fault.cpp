#include "fault.h"

#include <QtGlobal>

QLatin1String message(Fault fault) {
    switch (fault) {
    case Fault::CannotOpenFile:
        return QLatin1String("Cannot open data file!");
    case Fault::UnknownDelimiter:
        return QLatin1String("Unknown data file delimiter!");
    case Fault::TooFewColumns:
        return QLatin1String("Data file contains < 3 columns!");
    case Fault::IncorrectColumns:
        return QLatin1String("Incorrect data columns!");
    case Fault::NonNumericPValue:
        return QLatin1String("Non-numeric p-value detected!");
    case Fault::NonIntegerPosition:
        return QLatin1String("Non-integer position value detected!");
    case Fault::TooFewGenomePoints:
        return QLatin1String("Illegal data range in getManhattan0!");
    case Fault::TooFewChromosomePoints:
        return QLatin1String("Illegal data range in getManhattan!");
    }
    Q_UNREACHABLE();
}

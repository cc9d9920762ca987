#include "fault_sentences.h"

#include <QtGlobal>

QLatin1String sentence(FaultCode code) {
    switch (code) {
    case FaultCode::CannotOpenFile:
        return QLatin1String("Cannot open data file!");
    case FaultCode::UnknownDelimiter:
        return QLatin1String("Unknown data file delimiter!");
    case FaultCode::TooFewColumns:
        return QLatin1String("Data file contains < 3 columns!");
    case FaultCode::IncorrectColumns:
        return QLatin1String("Incorrect data columns!");
    case FaultCode::NonNumericPValue:
        return QLatin1String("Non-numeric p-value detected!");
    case FaultCode::NonIntegerPosition:
        return QLatin1String("Non-integer position value detected!");
    case FaultCode::TooFewGenomePoints:
        return QLatin1String("Illegal data range in getManhattan0!");
    case FaultCode::TooFewChromosomePoints:
        return QLatin1String("Illegal data range in getManhattan!");
    }
    Q_UNREACHABLE();
}

#pragma once

#include "fault.h"

#include <QLatin1String>

// The sentence by which users of the window know a fault, without a line end.
QLatin1String sentence(FaultCode code);

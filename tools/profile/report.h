#pragma once

#include "tools/profile/measured.h"

namespace rastel::profile {

// The display, its timings as rates, the choices, and the place of the numbers, on standard output.
void PrintReport(ReportingManager& manager, const MeasuredPrimary& primary);

}   // namespace rastel::profile

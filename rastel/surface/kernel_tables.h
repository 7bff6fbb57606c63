// The filled tables, one for each instruction set. Only the dispatch looks here.
#pragma once

#include "rastel/surface/kernels.h"

namespace rastel::kernels {

extern const RowTable plainTable;
extern const RowTable sse2Table;   // these two on x86 only
extern const RowTable avx2Table;

}   // namespace rastel::kernels

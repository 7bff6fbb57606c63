// The free kernels of "over" on straight colours, a row at a time: source pixels through a plane onto pixels that have
// a plane of their own, which is updated. Vector arithmetic; see docs/arithmetic.md.
#pragma once

#include "rastel/platform/types.h"

// 65536 / i, truncated; 65535 for 0 and 1. All 0 until InitReciprocalTable has run.
RASTEL_API extern WORD s_Reciprocal[256];
RASTEL_API void InitReciprocalTable();   // fills the table once

RASTEL_API void AlphaAdvLineMMX(unsigned char* pDst, unsigned char* pDstAlpha, const unsigned char* pSrc,
                                const unsigned char* pAlpha, int count);
// `color` as pixels lie in memory, its top byte too.
RASTEL_API void AlphaColorAdvLineMMX(unsigned char* pDst, unsigned char* pDstAlpha, DWORD color,
                                     const unsigned char* pAlpha, int count);

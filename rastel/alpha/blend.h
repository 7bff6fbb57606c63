// The free blending kernels, on raw rows: pointers to the first pixel, pitches in bytes, colours in memory order.
//
// Each comes in a plain form and in the vector form of the same name, whose numbers differ (see docs/arithmetic.md).
// The unmarked rectangle functions choose: the vector form where UseMMX allows it and the width is above 3. A width or
// height below 1 does nothing. Of the alpha byte: plain forms leave it; the vector forms treat pixels in pairs (see
// rastel/surface/kernels.h).
#pragma once

#include "rastel/platform/types.h"

// Through a plane: back + ((source - back) * a >> 8) in the plain form. `count` is at least 1.
RASTEL_API void AlphaLineCPU(unsigned char* pDst, const unsigned char* pSrc, const unsigned char* pAlpha, int count);
RASTEL_API void AlphaLineMMX(unsigned char* pDst, const unsigned char* pSrc, const unsigned char* pAlpha, int count);
RASTEL_API void AlphaRect(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                          const unsigned char* pAlpha, int alphaPitch, int width, int height);
RASTEL_API void AlphaRectCPU(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                             const unsigned char* pAlpha, int alphaPitch, int width, int height);
RASTEL_API void AlphaRectMMX(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                             const unsigned char* pAlpha, int alphaPitch, int width, int height);

// With one alpha for all, 0 to 255, over `pBack`, which may be the destination. Plain form:
// back + (source - back + 1) * alpha / 256, truncated towards zero.
RASTEL_API void AlphaConstRect(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                               const unsigned char* pBack, int backPitch, int width, int height, int alpha);
RASTEL_API void AlphaConstRectCPU(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                                  const unsigned char* pBack, int backPitch, int width, int height, int alpha);
RASTEL_API void AlphaConstRectMMX(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                                  const unsigned char* pBack, int backPitch, int width, int height, int alpha);

// The same, but pixels whose low 24 bits equal the key's keep the background's colour.
RASTEL_API void AlphaConstTransRect(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                                    const unsigned char* pBack, int backPitch, int width, int height, int alpha,
                                    DWORD key);
RASTEL_API void AlphaConstTransRectCPU(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                                       const unsigned char* pBack, int backPitch, int width, int height, int alpha,
                                       DWORD key);
RASTEL_API void AlphaConstTransRectMMX(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                                       const unsigned char* pBack, int backPitch, int width, int height, int alpha,
                                       DWORD key);

// The plain bodies of the blending kernels; the dispatch table names them. See kernels.h for what each means.
#pragma once

#include "rastel/platform/types.h"

namespace rastel::kernels::plain {

void AlphaRect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, const BYTE* alpha, int alphaPitch,
               int width, int height);
void AlphaColorRect(BYTE* target, int targetPitch, DWORD color, const BYTE* alpha, int alphaPitch, int width,
                    int height);
void AlphaConstRect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, const BYTE* back, int backPitch,
                    int width, int height, int alpha);
void AlphaConstTransRect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, const BYTE* back,
                         int backPitch, int width, int height, int alpha, DWORD key);
void AlphaAdvRect(BYTE* target, int targetPitch, BYTE* plane, int planePitch, const BYTE* source, int sourcePitch,
                  const BYTE* alpha, int alphaPitch, int width, int height);
void AlphaColorAdvRect(BYTE* target, int targetPitch, BYTE* plane, int planePitch, DWORD color, const BYTE* alpha,
                       int alphaPitch, int width, int height);

}   // namespace rastel::kernels::plain

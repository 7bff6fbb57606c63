#include "rastel/surface/blend_plain.h"

#include <algorithm>
#include <cstring>

namespace rastel::kernels::plain {

namespace {

DWORD LoadPixel(const BYTE* at) {
    DWORD pixel;
    std::memcpy(&pixel, at, sizeof(pixel));
    return pixel;
}

int Blend7(int back, int source, int weight) {
    return back + ((source - back) * weight >> 7);   // arithmetic shift: towards minus infinity
}

int AlphaWeight(int alpha) {
    return alpha == 253 ? 127 : alpha == 255 ? 128 : alpha >> 1;
}

// A pair's first pixel gets alpha byte 0, its second the blend; the odd last pixel of the row keeps the target's.
void BlendPairedPixel(BYTE* target, const BYTE* back, DWORD source, int weight, int x, int width) {
    for (int i = 0; i < 3; ++i) {
        target[i] = static_cast<BYTE>(Blend7(back[i], static_cast<int>(source >> i * 8 & 0xFF), weight));
    }
    if (x % 2 == 1) {
        target[3] = static_cast<BYTE>(Blend7(back[3], static_cast<int>(source >> 24), weight));
    } else if (x + 1 < width) {
        target[3] = 0;
    }
}

void AlphaPixel(BYTE* target, DWORD source, int alpha, int x, int width) {
    const bool isOddLast = x % 2 == 0 && x + 1 == width;
    BlendPairedPixel(target, target, source, isOddLast ? alpha >> 1 : AlphaWeight(alpha), x, width);
}

void OverPixel(BYTE* target, BYTE& plane, DWORD source, int alpha) {
    const int product = alpha * plane;
    const int covered = (product * 257 >> 16) - (product >= 32768 ? 1 : 0);
    const int left = plane - covered;
    const int coverage = std::min(left + alpha, 255);
    const int reciprocal = coverage < 2 ? 65535 : 65536 / coverage;
    plane = static_cast<BYTE>(coverage);
    for (int i = 0; i < 4; ++i) {
        const int s = static_cast<int>(source >> i * 8 & 0xFF);
        const int sum = (left * target[i] >> 1) + (alpha * s >> 1);
        const auto half = static_cast<unsigned>(sum) * static_cast<unsigned>(reciprocal) >> 16;
        target[i] = static_cast<BYTE>(std::min(half * 2, 255u));
    }
}

}   // namespace

void AlphaRect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, const BYTE* alpha, int alphaPitch,
               int width, int height) {
    for (int y = 0; y < height; ++y, target += targetPitch, source += sourcePitch, alpha += alphaPitch) {
        for (int x = 0; x < width; ++x) {
            AlphaPixel(target + x * 4, LoadPixel(source + x * 4), alpha[x], x, width);
        }
    }
}

void AlphaColorRect(BYTE* target, int targetPitch, DWORD color, const BYTE* alpha, int alphaPitch, int width,
                    int height) {
    for (int y = 0; y < height; ++y, target += targetPitch, alpha += alphaPitch) {
        for (int x = 0; x < width; ++x) {
            AlphaPixel(target + x * 4, color, alpha[x], x, width);
        }
    }
}

void AlphaConstRect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, const BYTE* back, int backPitch,
                    int width, int height, int alpha) {
    const int weight = (alpha & 0xFF) >> 1;
    for (int y = 0; y < height; ++y, target += targetPitch, source += sourcePitch, back += backPitch) {
        for (int x = 0; x < width; ++x) {
            BlendPairedPixel(target + x * 4, back + x * 4, LoadPixel(source + x * 4), weight, x, width);
        }
    }
}

void AlphaConstTransRect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, const BYTE* back,
                         int backPitch, int width, int height, int alpha, DWORD key) {
    const int fullWeight = (alpha & 0xFF) >> 1;
    for (int y = 0; y < height; ++y, target += targetPitch, source += sourcePitch, back += backPitch) {
        for (int x = 0; x < width; ++x) {
            const DWORD pixel = LoadPixel(source + x * 4);
            const int weight = ((pixel ^ key) & 0xFFFFFF) == 0 ? 0 : fullWeight;
            for (int i = 0; i < 3; ++i) {
                target[x * 4 + i] =
                    static_cast<BYTE>(Blend7(back[x * 4 + i], static_cast<int>(pixel >> i * 8 & 0xFF), weight));
            }
            target[x * 4 + 3] = 0;
        }
    }
}

void AlphaAdvRect(BYTE* target, int targetPitch, BYTE* plane, int planePitch, const BYTE* source, int sourcePitch,
                  const BYTE* alpha, int alphaPitch, int width, int height) {
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            OverPixel(target + x * 4, plane[x], LoadPixel(source + x * 4), alpha[x]);
        }
        target += targetPitch;
        plane += planePitch;
        source += sourcePitch;
        alpha += alphaPitch;
    }
}

void AlphaColorAdvRect(BYTE* target, int targetPitch, BYTE* plane, int planePitch, DWORD color, const BYTE* alpha,
                       int alphaPitch, int width, int height) {
    for (int y = 0; y < height; ++y, target += targetPitch, plane += planePitch, alpha += alphaPitch) {
        for (int x = 0; x < width; ++x) {
            OverPixel(target + x * 4, plane[x], color, alpha[x]);
        }
    }
}

}   // namespace rastel::kernels::plain

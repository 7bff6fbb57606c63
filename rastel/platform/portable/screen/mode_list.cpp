#include "rastel/platform/portable/screen/mode_list.h"

#include <bit>

namespace rastel::platform {

namespace {

bool IsContiguous(DWORD mask) {
    return mask != 0 && std::has_single_bit((mask >> std::countr_zero(mask)) + DWORD{1});
}

}   // namespace

bool IsSensibleMode(int width, int height, int bitsPerPixel) {
    constexpr int kMostPixels = 32767;   // what window systems count with
    const bool sized = width > 0 && height > 0 && width <= kMostPixels && height <= kMostPixels;
    switch (bitsPerPixel) {
        case 8:
        case 15:
        case 16:
        case 24:
        case 32:
            return sized;
        default:
            return false;
    }
}

bool AreSensibleMasks(int storedBits, DWORD red, DWORD green, DWORD blue) {
    const DWORD inside = storedBits >= 32 ? ~DWORD{0} : (DWORD{1} << storedBits) - 1;
    return IsContiguous(red) && IsContiguous(green) && IsContiguous(blue) && ((red | green | blue) & ~inside) == 0 &&
           (red & green) == 0 && (red & blue) == 0 && (green & blue) == 0;
}

std::vector<DisplayMode> UsualModes(int refreshHz) {
    constexpr struct {
        int width;
        int height;
    } kSizes[] = {{640, 480},   {800, 600},  {1024, 768},  {1152, 864}, {1280, 720},
                  {1280, 1024}, {1366, 768}, {1600, 1200}, {1920, 1080}};
    std::vector<DisplayMode> modes;
    for (const int bits : {8, 16, 32}) {
        for (const auto& size : kSizes) {
            modes.push_back({size.width, size.height, bits, refreshHz});
        }
    }
    return modes;
}

}   // namespace rastel::platform

#include "tests/platform/contract/screen.h"

#include <cstdlib>

namespace rastel::test {

bool IsClose(COLORREF shown, COLORREF wanted) {
    const HDC screen = ::GetDC(nullptr);
    const int bits = ::GetDeviceCaps(screen, BITSPIXEL) * ::GetDeviceCaps(screen, PLANES);
    ::ReleaseDC(nullptr, screen);
    constexpr int smallest16 = 8, nearestOfPalette = 72;
    const int most = bits < 15 ? nearestOfPalette : smallest16;
    const auto isNear = [most](int a, int b) { return std::abs(a - b) <= most; };
    return isNear(GetRValue(shown), GetRValue(wanted)) && isNear(GetGValue(shown), GetGValue(wanted)) &&
           isNear(GetBValue(shown), GetBValue(wanted));
}

}   // namespace rastel::test

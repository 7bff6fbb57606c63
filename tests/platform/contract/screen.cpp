#include "tests/platform/contract/screen.h"

#include <cstdlib>

namespace rastel::test {

bool IsClose(COLORREF shown, COLORREF wanted) {
    const auto near8 = [](int a, int b) { return std::abs(a - b) <= 8; };
    return near8(GetRValue(shown), GetRValue(wanted)) && near8(GetGValue(shown), GetGValue(wanted)) &&
           near8(GetBValue(shown), GetBValue(wanted));
}

}   // namespace rastel::test

#include "rastel/platform/gdi.h"
#include "tests/text/test_fonts.h"

namespace rastel::test {

bool AddTestFont() {
    return ::AddFontResourceExA(RASTEL_TEST_MEDIA "/rastel-test-sans.ttf", FR_PRIVATE, nullptr) > 0;
}

}   // namespace rastel::test

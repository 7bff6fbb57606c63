#include "tests/text/test_fonts.h"

#include "rastel/platform/portable/gdi/font_files.h"

namespace rastel::test {

bool AddTestFont() {
    platform::UseSystemFonts(false);
    return platform::AddFontFile(RASTEL_TEST_MEDIA "/rastel-test-sans.ttf");
}

}   // namespace rastel::test

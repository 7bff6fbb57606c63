#include "gdi_test_support.h"

namespace rastel::test {
namespace {

TEST(Conversion, GreyRampTakesTheNearestGrey) {
    Section source(64, 64, Plain32());
    Section ramp(64, 64, kFormats[2]);
    for (int i = 0; i < 256; ++i) {
        const BYTE grey = static_cast<BYTE>(i);
        ramp.Colors()[static_cast<std::size_t>(i)] = {grey, grey, grey, 0};
    }
    ASSERT_EQ(SetDIBColorTable(ramp.Dc(), 0, 256, ramp.Colors().data()), 256u);
    source.Randomize();
    BitBlt(ramp.Dc(), 0, 0, 64, 64, source.Dc(), 0, 0, SRCCOPY);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            ASSERT_EQ(ramp.Raw(x, y), ramp.RawOf(source.Color(x, y))) << x << "," << y;
        }
    }
}

}   // namespace
}   // namespace rastel::test

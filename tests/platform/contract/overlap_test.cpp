// Copies within one bitmap.
#include "tests/platform/gdi/gdi_test_support.h"

namespace rastel::test {
namespace {

TEST(Overlap, MovesWithinOneBitmapReadBeforeTheyWrite) {
    for (const Format& format : kFormats) {
        if (format.depth < 8) {
            continue;
        }
        for (const Rows rows : {Rows::TopDown, Rows::BottomUp}) {
            for (int round = 0; round < 30; ++round) {
                Section picture(37, 23, format, rows);
                picture.Randomize();
                Section before(37, 23, format, rows);
                before.Load(picture.Copy());
                Section expected(37, 23, format, rows);
                expected.Load(picture.Copy());
                const int dx = RandomIn(-6, 6);
                const int dy = RandomIn(-6, 6);
                const DWORD operation = round % 3 == 0 ? SRCINVERT : SRCCOPY;
                if (round % 4 == 1) {
                    ExcludeClipRect(picture.Dc(), 12, 8, 20, 12);
                    ExcludeClipRect(expected.Dc(), 12, 8, 20, 12);
                }
                const int size = round % 5 == 2 ? 19 : 22;   // a stretch now and then
                StretchBlt(picture.Dc(), 7 + dx, 6 + dy, 22, 10, picture.Dc(), 7, 6, size, 10, operation);
                StretchBlt(expected.Dc(), 7 + dx, 6 + dy, 22, 10, before.Dc(), 7, 6, size, 10, operation);
                ASSERT_EQ(picture.Copy(), expected.Copy()) << format.name << " by " << dx << "," << dy;
            }
        }
    }
}

TEST(Overlap, BitsOfASectionMayBeDrawnOntoItself) {
    Section picture(16, 16, Plain32());
    picture.Randomize();
    Section before(16, 16, Plain32());
    before.Load(picture.Copy());
    InfoBlock info(16, 16, Plain32());
    ASSERT_EQ(
        StretchDIBits(picture.Dc(), 3, 2, 16, 16, 0, 0, 16, 16, picture.Bits(), info.Info(), DIB_RGB_COLORS, SRCCOPY),
        16);
    for (int y = 2; y < 16; ++y) {
        for (int x = 3; x < 16; ++x) {
            ASSERT_EQ(picture.Raw(x, y), before.Raw(x - 3, y - 2));
        }
    }
}

}   // namespace
}   // namespace rastel::test

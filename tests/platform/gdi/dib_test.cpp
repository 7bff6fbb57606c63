#include "gdi_test_support.h"

namespace rastel::test {
namespace {

TEST(Section, SizesAndFormatsThatMakeNoSenseAreRefused) {
    const HDC dc = CreateCompatibleDC(nullptr);
    const auto make = [dc](int width, int height, int depth, DWORD compression = BI_RGB) {
        InfoBlock info(1, 1, Plain32());
        info.Info()->bmiHeader.biWidth = width;
        info.Info()->bmiHeader.biHeight = height;
        info.Info()->bmiHeader.biBitCount = static_cast<WORD>(depth);
        info.Info()->bmiHeader.biCompression = compression;
        void* bits = nullptr;
        const HBITMAP bitmap = CreateDIBSection(dc, info.Info(), DIB_RGB_COLORS, &bits, nullptr, 0);
        EXPECT_EQ(bitmap == nullptr, bits == nullptr);
        DeleteObject(bitmap);
        return bitmap != nullptr;
    };
    EXPECT_TRUE(make(7, -7, 4));
    EXPECT_FALSE(make(0, 7, 32));
    EXPECT_FALSE(make(-7, 7, 32));
    EXPECT_FALSE(make(7, 0, 32));
    EXPECT_FALSE(make(7, INT32_MIN, 32));
    EXPECT_FALSE(make(INT32_MAX, 1, 32));
    EXPECT_FALSE(make(INT32_MAX, INT32_MAX, 1));
    EXPECT_FALSE(make(65536, 8192, 32));   // just past 31 bits
    EXPECT_FALSE(make(7, 7, 15));
    EXPECT_FALSE(make(7, 7, 2));
    EXPECT_FALSE(make(7, 7, 8, BI_BITFIELDS));
    EXPECT_FALSE(make(7, 7, 16, BI_BITFIELDS));   // no masks there
    EXPECT_FALSE(make(7, 7, 8, 1));
    EXPECT_EQ(CreateDIBSection(dc, nullptr, DIB_RGB_COLORS, nullptr, nullptr, 0), nullptr);
    EXPECT_EQ(CreateBitmap(INT32_MAX, INT32_MAX, 1, 32, nullptr), nullptr);
    EXPECT_EQ(CreateBitmap(-1, 1, 1, 32, nullptr), nullptr);
    EXPECT_EQ(CreateBitmap(1, 1, 1, 33, nullptr), nullptr);
    DeleteDC(dc);
}

TEST(PackedPixels, BandsOfAPictureMakeTheWhole) {
    for (const Rows rows : {Rows::TopDown, Rows::BottomUp}) {
        Section source(10, 12, Plain32(), rows);
        source.Randomize();
        InfoBlock info(10, 12, Plain32(), rows);
        Section whole(10, 12, Plain32());
        BitBlt(whole.Dc(), 0, 0, 10, 12, source.Dc(), 0, 0, SRCCOPY);
        Section pieced(10, 12, Plain32());
        for (UINT first = 0; first < 12; first += 5) {
            const unsigned char* const band = source.Bits() + static_cast<std::size_t>(first) * 40;
            const UINT count = std::min(5u, 12 - first);
            EXPECT_EQ(SetDIBitsToDevice(pieced.Dc(), 0, 0, 10, 12, 0, 0, first, 5, band, info.Info(), DIB_RGB_COLORS),
                      static_cast<int>(count));
        }
        EXPECT_EQ(pieced.Copy(), whole.Copy());
    }
}

}   // namespace
}   // namespace rastel::test

// DIB sections, and pixels that come in packed DIBs.
#include "tests/platform/gdi/gdi_test_support.h"

namespace rastel::test {
namespace {

TEST(Section, PointerAndContextShowTheSameBytes) {
    for (const Rows rows : {Rows::TopDown, Rows::BottomUp}) {
        Section section(5, 3, kFormats[6], rows);
        EXPECT_EQ(section.Pitch(), 16);
        SetPixelV(section.Dc(), 4, 0, RGB(1, 2, 3));
        const unsigned char* const top = section.Bits() + (rows == Rows::TopDown ? 0 : 2 * 16);
        EXPECT_EQ(top[12], 3);
        EXPECT_EQ(top[14], 1);
        section.Bits()[1] = 0x77;
        EXPECT_EQ(GetPixel(section.Dc(), 0, rows == Rows::TopDown ? 0 : 2), RGB(0, 0x77, 0));
        DIBSECTION description{};
        ASSERT_EQ(GetObjectW(section.Bitmap(), sizeof(description), &description),
                  static_cast<int>(sizeof(description)));
        EXPECT_EQ(description.dsBm.bmBits, section.Bits());
        EXPECT_EQ(description.dsBm.bmWidthBytes, 16);
        EXPECT_EQ(description.dsBmih.biHeight, 3);   // whichever way the rows run
        EXPECT_EQ(description.dsBmih.biSizeImage, 48u);
    }
}

TEST(Section, PixelsAreZeroWhateverTheMemoryHeld) {
    for (int round = 0; round < 6; ++round) {
        Section section(700, 300 + round, Plain32());
        const std::vector<unsigned char> zero(section.Bytes());
        ASSERT_EQ(section.Copy(), zero);
        std::memset(section.Bits(), 0xEE, section.Bytes());
    }
}

TEST(Section, ColourTableIsWhatPixelsAreReadThrough) {
    Section section(4, 1, kFormats[2]);
    std::memset(section.Bits(), 200, 4);
    const RGBQUAD colors[2] = {{1, 2, 3, 0}, {4, 5, 6, 0}};
    EXPECT_EQ(SetDIBColorTable(section.Dc(), 199, 2, colors), 2u);
    EXPECT_EQ(GetPixel(section.Dc(), 0, 0), RGB(6, 5, 4));
    EXPECT_EQ(SetDIBColorTable(section.Dc(), 255, 2, colors), 1u);
    EXPECT_EQ(SetDIBColorTable(section.Dc(), 256, 2, colors), 0u);
    RGBQUAD back[3] = {};
    EXPECT_EQ(GetDIBColorTable(section.Dc(), 199, 2, back), 2u);
    EXPECT_EQ(back[1].rgbRed, 6);
    Section plain(4, 1, Plain32());
    EXPECT_EQ(SetDIBColorTable(plain.Dc(), 0, 2, colors), 0u);
}

TEST(PackedPixels, StretchDIBitsEqualsABlitFromASection) {
    for (const Format& from : kFormats) {
        for (const Rows rows : {Rows::TopDown, Rows::BottomUp}) {
            Section source(21, 13, from, rows);
            source.Randomize();
            InfoBlock info(21, 13, from, rows);
            if (from.depth <= 8) {
                std::memcpy(info.Colors(), source.Colors().data(), source.Colors().size() * sizeof(RGBQUAD));
            }
            Section packed(40, 30, kFormats[4]);
            Section blitted(40, 30, kFormats[4]);
            for (const int height : {13, 29, -13}) {
                // Rows of a bottom-up picture are counted from below.
                const int sourceY = rows == Rows::TopDown ? 2 : 13 - 2 - 9;
                EXPECT_GT(StretchDIBits(packed.Dc(), 3, 14, 33, height, 1, sourceY, 17, 9, source.Bits(), info.Info(),
                                        DIB_RGB_COLORS, SRCCOPY),
                          0);
                StretchBlt(blitted.Dc(), 3, 14, 33, height, source.Dc(), 1, 2, 17, 9, SRCCOPY);
                ASSERT_EQ(packed.Copy(), blitted.Copy()) << from.name << " " << height;
            }
        }
    }
}

TEST(PackedPixels, GetAndSetDIBitsAreInverse) {
    for (const Format& format : kFormats) {
        Section source(19, 7, format, Rows::BottomUp);
        source.Randomize();
        const HDC dc = source.Dc();
        for (const Rows rows : {Rows::TopDown, Rows::BottomUp}) {
            InfoBlock info(19, 7, format, rows);
            std::vector<unsigned char> bits(source.Bytes(), 0xA5);
            ASSERT_EQ(GetDIBits(dc, source.Bitmap(), 0, 7, bits.data(), info.Info(), DIB_RGB_COLORS), 7);
            Section target(19, 7, format);
            ASSERT_EQ(SetDIBits(dc, target.Bitmap(), 0, 7, bits.data(), info.Info(), DIB_RGB_COLORS), 7);
            for (int y = 0; y < 7; ++y) {
                for (int x = 0; x < 19; ++x) {
                    ASSERT_EQ(target.Color(x, y), source.Color(x, y)) << format.name << " " << x << "," << y;
                }
            }
        }
    }
    Section section(19, 7, kFormats[4]);
    InfoBlock info(1, 1, Plain32());
    info.Info()->bmiHeader.biBitCount = 0;
    EXPECT_NE(GetDIBits(section.Dc(), section.Bitmap(), 0, 0, nullptr, info.Info(), DIB_RGB_COLORS), 0);
    EXPECT_EQ(info.Info()->bmiHeader.biWidth, 19);
    EXPECT_EQ(info.Info()->bmiHeader.biBitCount, 16);
    EXPECT_EQ(info.Info()->bmiHeader.biCompression, static_cast<DWORD>(BI_BITFIELDS));
}

}   // namespace
}   // namespace rastel::test

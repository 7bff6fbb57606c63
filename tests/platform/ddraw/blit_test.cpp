// What blits leave on their target: copies, stretches, fills and keys, on every depth and between depths.
#include <algorithm>
#include <climits>

#include "tests/platform/ddraw/ddraw_test_support.h"

namespace rastel::test {
namespace {

class Blits : public OnDirectDraw {};

// Colours that every format and the fixed palette entries can hold.
constexpr DWORD kPure[] = {0x000000, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF, 0xFFFFFF};

COLORREF Swapped(DWORD word) {
    return RGB(word >> 16, word >> 8, word);
}

TEST_F(Blits, ColoursArriveFromAnyFormatOnAnyScreen) {
    for (const Format& screen : kFormats) {
        Start(screen);
        const Surface primary = Make(Primary()), words = Make(OffScreen(8, 1, kWords));
        Write(*words, Words(std::begin(kPure), std::end(kPure)));
        for (const Format& format : kFormats) {
            const Surface between = Make(OffScreen(8, 1, format));
            const RECT row = {0, 0, 8, 1}, place = {90, 70, 98, 71};
            ASSERT_EQ(Fill(*primary, nullptr, 0), DD_OK);
            ASSERT_EQ(Blt(*between, row, *words, row), DD_OK);
            ASSERT_EQ(Blt(*primary, place, *between, row), DD_OK);
            for (int x = 0; x < 8; ++x) {
                EXPECT_EQ(MemoryScreenPixel(90 + x, 70), Swapped(kPure[x])) << screen.bits << ' ' << format.bits;
            }
            EXPECT_EQ(MemoryScreenPixel(89, 70), 0u);
            EXPECT_EQ(MemoryScreenPixel(98, 70), 0u);
            // And back, by way of the screen's pixels.
            ASSERT_EQ(Fill(*words, nullptr, 0x123456), DD_OK);
            ASSERT_EQ(Blt(*words, row, *primary, place), DD_OK);
            EXPECT_EQ(Read(*words), Words(std::begin(kPure), std::end(kPure))) << screen.bits << ' ' << format.bits;
        }
    }
}

TEST_F(Blits, AFillWritesTheRawPixelAndNothingBeside) {
    for (const Format& format : kFormats) {
        const Surface surface = Make(OffScreen(5, 3, format));
        const RECT part = {1, 1, 4, 2};
        const DWORD all = 0xFFFFFFFFu >> (32 - (format.bits + 1) / 8 * 8);
        ASSERT_EQ(Fill(*surface, nullptr, 0), DD_OK);
        ASSERT_EQ(Fill(*surface, &part, 0xFFA5A5A5), DD_OK);
        Words wanted(15, 0);
        std::fill_n(wanted.begin() + 6, 3, 0xFFA5A5A5 & all);
        EXPECT_EQ(Read(*surface), wanted) << format.bits;
    }
    const Surface surface = Make(OffScreen(5, 3));
    EXPECT_EQ(Fill(*surface, nullptr, 3, DDBLT_KEYSRC | DDBLT_WAIT),
              DD_OK);   // there is no source to ask
    auto effects = Sized<DDBLTFX>();
    EXPECT_LT(surface->Blt(nullptr, nullptr, nullptr, DDBLT_COLORFILL, nullptr), 0);
    effects.dwSize = 4;
    EXPECT_LT(surface->Blt(nullptr, nullptr, nullptr, DDBLT_COLORFILL, &effects), 0);
}

TEST_F(Blits, AnOverlapMovesAsIfThroughACopy) {
    constexpr int size = 9;
    for (const Format& format : {kFormats[0], kFormats[3], kFormats[4]}) {
        for (const bool isKeyed : {false, true}) {
            for (const auto& [dx, dy] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}, {2, 2}, {-2, -1}, {2, -2}}) {
                const Surface surface = Make(OffScreen(size, size, format));
                const Words before = Counted(size * size, 1);
                Write(*surface, before);
                const RECT from = {2, 2, 7, 7}, to = {2 + dx, 2 + dy, 7 + dx, 7 + dy};
                DDCOLORKEY key = {before[4 * size + 4], before[4 * size + 4]};
                ASSERT_EQ(surface->SetColorKey(DDCKEY_SRCBLT, &key), DD_OK);
                ASSERT_EQ(Blt(*surface, to, *surface, from, DDBLT_WAIT | (isKeyed ? DDBLT_KEYSRC : 0u)), DD_OK);
                Words wanted = before;
                for (int y = 2; y < 7; ++y) {
                    for (int x = 2; x < 7; ++x) {
                        const DWORD moved = before[static_cast<std::size_t>(y * size + x)];
                        if (!isKeyed || moved != key.dwColorSpaceLowValue) {
                            wanted[static_cast<std::size_t>((y + dy) * size + x + dx)] = moved;
                        }
                    }
                }
                EXPECT_EQ(Read(*surface), wanted) << format.bits << ' ' << dx << ' ' << dy << ' ' << isKeyed;
            }
        }
    }
}

TEST_F(Blits, AStretchPicksByExactSteps) {
    for (const Format& format : kFormats) {
        const Surface source = Make(OffScreen(11, 5, format));
        const Words words = Counted(55, 1);
        Write(*source, words);
        for (const auto& [width, height] : {std::pair{29, 17}, {7, 3}, {11, 9}, {40, 5}, {1, 1}}) {
            for (const bool isKeyed : {false, true}) {
                const Surface target = Make(OffScreen(width, height, format));
                ASSERT_EQ(Fill(*target, nullptr, 0xFF), DD_OK);
                auto effects = Sized<DDBLTFX>();
                effects.ddckSrcColorkey = {words[0], words[0]};
                ASSERT_EQ(target->Blt(nullptr, source.get(), nullptr,
                                      DDBLT_WAIT | (isKeyed ? DDBLT_KEYSRCOVERRIDE : 0u), &effects),
                          DD_OK);
                Words wanted;
                for (int y = 0; y < height; ++y) {
                    for (int x = 0; x < width; ++x) {
                        const DWORD picked = words[static_cast<std::size_t>(y * 5 / height * 11 + x * 11 / width)];
                        wanted.push_back(isKeyed && picked == words[0] ? 0xFF : picked);
                    }
                }
                EXPECT_EQ(Read(*target), wanted) << format.bits << ' ' << width << ' ' << height << ' ' << isKeyed;
            }
        }
    }
}

TEST_F(Blits, TheKeyKeepsItsPixelsBackAndCountsWithoutTheAlphaByte) {
    const Surface source = Make(OffScreen(4, 1, kWords)), target = Make(OffScreen(4, 1, kWords));
    const RECT row = {0, 0, 4, 1};
    Write(*source, {0xFF102030, 0x00102031, 0x00102032, 0x77FFFFFF});
    const auto draw = [&](DDCOLORKEY key, DWORD flags) {
        auto effects = Sized<DDBLTFX>();
        effects.ddckSrcColorkey = key;
        RECT to = row, from = row;
        EXPECT_EQ(Fill(*target, nullptr, 5), DD_OK);
        EXPECT_EQ(target->Blt(&to, source.get(), &from, flags | DDBLT_WAIT, &effects), DD_OK);
        Words drawn = Read(*target);
        for (DWORD& word : drawn) {
            word &= 0xFFFFFF;
        }
        return drawn;
    };
    EXPECT_EQ(draw({0x102030, 0x102030}, DDBLT_KEYSRCOVERRIDE), (Words{5, 0x102031, 0x102032, 0xFFFFFF}));
    EXPECT_EQ(draw({0x102031, 0x102032}, DDBLT_KEYSRCOVERRIDE), (Words{0x102030, 5, 5, 0xFFFFFF}));
    EXPECT_EQ(draw({0x99FFFFFF, 0}, DDBLT_KEYSRCOVERRIDE), (Words{0x102030, 0x102031, 0x102032, 5}));
    EXPECT_EQ(Blt(*target, row, *source, row, DDBLT_KEYSRC), DDERR_NOCOLORKEY);
    DDCOLORKEY key = {0x102032, 0x102032};
    ASSERT_EQ(source->SetColorKey(DDCKEY_SRCBLT, &key), DD_OK);
    EXPECT_EQ(draw({}, DDBLT_KEYSRC), (Words{0x102030, 0x102031, 5, 0xFFFFFF}));
    ASSERT_EQ(source->SetColorKey(DDCKEY_SRCBLT, nullptr), DD_OK);
    EXPECT_EQ(Blt(*target, row, *source, row, DDBLT_KEYSRC), DDERR_NOCOLORKEY);
    for (const Format& format : {kFormats[1], kFormats[2]}) {   // the key is in the format of the source
        Start(format);
        const Surface primary = Make(Primary());
        ASSERT_EQ(Fill(*primary, nullptr, 0), DD_OK);
        Write(*source, {0xFF0000, 0x00FF00, 0x0000FF, 0x00FFFF});
        auto effects = Sized<DDBLTFX>();
        effects.ddckSrcColorkey = {0x00FF00, 0x00FF00};
        RECT to = row, from = row;
        ASSERT_EQ(primary->Blt(&to, source.get(), &from, DDBLT_KEYSRCOVERRIDE | DDBLT_WAIT, &effects), DD_OK);
        EXPECT_EQ(MemoryScreenPixel(0, 0), RGB(255, 0, 0));
        EXPECT_EQ(MemoryScreenPixel(1, 0), 0u);
        EXPECT_EQ(MemoryScreenPixel(2, 0), RGB(0, 0, 255));
    }
}

TEST_F(Blits, RectanglesThatLieOutsideAreRefusedAndLeaveNoTrace) {
    const Surface target = Make(OffScreen(6, 6)), source = Make(OffScreen(6, 6)), primary = Make(Primary());
    const RECT good = {0, 0, 6, 6};
    Write(*target, Counted(36));
    for (const RECT& bad : {RECT{-1, 0, 5, 6},
                            {0, 0, 7, 6},
                            {0, 0, 6, 7},
                            {3, 3, 3, 5},
                            {5, 5, 2, 2},
                            {INT_MIN, INT_MIN, INT_MAX, INT_MAX},
                            {INT_MAX, INT_MAX, INT_MIN, INT_MIN}}) {
        EXPECT_EQ(Blt(*target, bad, *source, good), DDERR_INVALIDRECT);
        EXPECT_EQ(Blt(*target, good, *source, bad), DDERR_INVALIDRECT);
        EXPECT_EQ(Fill(*target, &bad, 0), DDERR_INVALIDRECT);
    }
    const RECT beside = {95, 75, 101, 81};
    EXPECT_EQ(Blt(*primary, beside, *source, good), DDERR_INVALIDRECT);
    EXPECT_LT(target->Blt(nullptr, nullptr, nullptr, DDBLT_WAIT, nullptr), 0);
    EXPECT_LT(Blt(*target, good, *source, good, 0x40000000), 0);
    EXPECT_EQ(Read(*target), Counted(36));
}

TEST_F(Blits, TheFastOneCopiesByACorner) {
    const Surface target = Make(OffScreen(4, 2, kWords)), source = Make(OffScreen(2, 2, kWords));
    Write(*source, {1, 2, 3, 4});
    ASSERT_EQ(Fill(*target, nullptr, 9), DD_OK);
    FailDeviceCalls("Blt", 1);   // none of its business
    EXPECT_EQ(target->BltFast(2, 0, source.get(), nullptr, DDBLTFAST_WAIT), DD_OK);
    FailDeviceCalls("Blt", 0);
    EXPECT_EQ(Read(*target), (Words{9, 9, 1, 2, 9, 9, 3, 4}));
    DDCOLORKEY key = {4, 4};
    RECT bottom = {0, 1, 2, 2}, wild = {INT_MIN, 0, INT_MAX, 2};
    ASSERT_EQ(source->SetColorKey(DDCKEY_SRCBLT, &key), DD_OK);
    EXPECT_EQ(target->BltFast(0, 0, source.get(), &bottom, DDBLTFAST_SRCCOLORKEY | DDBLTFAST_WAIT), DD_OK);
    EXPECT_EQ(Read(*target), (Words{3, 9, 1, 2, 9, 9, 3, 4}));
    EXPECT_EQ(target->BltFast(3, 0, source.get(), nullptr, 0), DDERR_INVALIDRECT);
    EXPECT_EQ(target->BltFast(static_cast<DWORD>(-1), 0, source.get(), nullptr, 0), DDERR_INVALIDRECT);
    EXPECT_EQ(target->BltFast(0, 0, source.get(), &wild, 0), DDERR_INVALIDRECT);
    EXPECT_LT(target->BltFast(0, 0, nullptr, nullptr, 0), 0);
    const Com<IDirectDrawClipper> clipper = NewClipper();
    ASSERT_EQ(target->SetClipper(clipper.get()), DD_OK);
    EXPECT_EQ(target->BltFast(0, 0, source.get(), nullptr, 0), DDERR_BLTFASTCANTCLIP);
}

}   // namespace
}   // namespace rastel::test

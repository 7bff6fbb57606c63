// What limits a blit: lists of rectangles, and windows that are covered, moved and gone.
#include <climits>

#include "tests/platform/ddraw/ddraw_test_support.h"

namespace rastel::test {
namespace {

class Clippers : public OnDirectDraw {
protected:
    struct List {
        explicit List(std::initializer_list<RECT> rects) : bytes(sizeof(RGNDATAHEADER) + rects.size() * sizeof(RECT)) {
            Header().dwSize = sizeof(RGNDATAHEADER);
            Header().iType = RDH_RECTANGLES;
            Header().nCount = static_cast<DWORD>(rects.size());
            Header().nRgnSize = static_cast<DWORD>(rects.size() * sizeof(RECT));
            std::copy(rects.begin(), rects.end(), reinterpret_cast<RECT*>(bytes.data() + sizeof(RGNDATAHEADER)));
        }
        LPRGNDATA Data() { return reinterpret_cast<LPRGNDATA>(bytes.data()); }
        RGNDATAHEADER& Header() { return Data()->rdh; }
        std::vector<unsigned char> bytes;
    };

    static bool IsWhite(int x, int y) { return MemoryScreenPixel(x, y) == RGB(255, 255, 255); }
};

TEST_F(Clippers, AListLimitsFillsCopiesStretchesAndKeys) {
    const Surface target = Make(OffScreen(12, 8, kWords)), source = Make(OffScreen(12, 8, kWords));
    const Surface small = Make(OffScreen(3, 2, kWords));
    Write(*source, Counted(96));
    Write(*small, Counted(6));
    DDCOLORKEY key = {0xFFFFFF, 0xFFFFFF};
    ASSERT_EQ(small->SetColorKey(DDCKEY_SRCBLT, &key), DD_OK);
    const Com<IDirectDrawClipper> clipper = NewClipper();
    {
        List list{{2, 1, 6, 5}, {4, 3, 11, 7}, {-50, -50, -40, -40}};
        ASSERT_EQ(clipper->SetClipList(list.Data(), 0), DD_OK);
        std::fill(list.bytes.begin(), list.bytes.end(), 0xEE);   // it was copied
    }
    const auto isInside = [](int x, int y) {
        return (x >= 2 && x < 6 && y >= 1 && y < 5) || (x >= 4 && x < 11 && y >= 3 && y < 7);
    };
    const RECT whole = {0, 0, 12, 8}, tiny = {0, 0, 3, 2}, wide = {-12, -8, 24, 16};
    const auto check = [&](const char* what, const auto& draw, const auto& pixel) {
        target->SetClipper(nullptr);
        ASSERT_EQ(Fill(*target, nullptr, 7), DD_OK);
        ASSERT_EQ(target->SetClipper(clipper.get()), DD_OK);
        ASSERT_EQ(draw(), DD_OK) << what;
        Words wanted;
        for (int y = 0; y < 8; ++y) {
            for (int x = 0; x < 12; ++x) {
                wanted.push_back(isInside(x, y) ? pixel(x, y) : 7);
            }
        }
        EXPECT_EQ(Read(*target), wanted) << what;
    };
    const auto counted = [](int i) { return static_cast<DWORD>(i + 1) * 0x00010305; };
    check(
        "fill", [&] { return Fill(*target, nullptr, 1); }, [](int, int) { return 1u; });
    check(
        "copy", [&] { return Blt(*target, whole, *source, whole); }, [&](int x, int y) { return counted(y * 12 + x); });
    check(
        "stretch", [&] { return Blt(*target, whole, *small, tiny); },
        [&](int x, int y) { return counted(y / 4 * 3 + x / 4); });
    // A picture that is larger than the surface is cut, not squeezed.
    for (const DWORD flags : {DWORD{0}, DWORD{DDBLT_KEYSRC}}) {
        check(
            "large", [&] { return Blt(*target, wide, *small, tiny, flags | DDBLT_WAIT); },
            [&](int x, int y) { return counted((y + 8) / 12 * 3 + (x + 12) / 12); });
    }
    List nothing{};
    ASSERT_EQ(clipper->SetClipList(nothing.Data(), 0), DD_OK);
    const Words before = Read(*target);
    EXPECT_EQ(Fill(*target, nullptr, 99), DD_OK);
    EXPECT_EQ(Read(*target), before);
    ASSERT_EQ(clipper->SetClipList(nullptr, 0), DD_OK);
    EXPECT_EQ(Fill(*target, nullptr, 99), DDERR_NOCLIPLIST);
}

TEST_F(Clippers, WildTargetsKeepTheScaleOfThePicture) {
    const HWND window = rastel::platform::CreateMemoryWindow({10, 10, 50, 50});
    const Surface primary = Make(Primary()), source = Make(OffScreen(2, 1, kWords));
    const Com<IDirectDrawClipper> clipper = NewClipper();
    Write(*source, {0x000000, 0xFFFFFF});
    ASSERT_EQ(clipper->SetHWnd(0, window), DD_OK);
    ASSERT_EQ(primary->SetClipper(clipper.get()), DD_OK);
    ASSERT_EQ(Blt(*primary, {INT_MIN + 50, 0, INT_MAX, 60}, *source, {0, 0, 2, 1}),
              DD_OK);   // halves meet at 24.5
    EXPECT_FALSE(IsWhite(23, 20));
    EXPECT_TRUE(IsWhite(26, 20));
}

TEST_F(Clippers, BrokenListsAreRefusedAndTheOldOneStays) {
    const Surface target = Make(OffScreen(4, 4));
    const Com<IDirectDrawClipper> clipper = NewClipper();
    List good{{1, 1, 2, 2}};
    ASSERT_EQ(clipper->SetClipList(good.Data(), 0), DD_OK);
    std::vector<List> bad(4, good);
    bad[0].Header().dwSize = 0;
    bad[1].Header().iType = 0;
    bad[2].Header().nCount = 2;             // more than its bytes hold
    bad[3].Header().nCount = 0x10000001u;   // whose product wraps
    for (List& list : bad) {
        EXPECT_EQ(clipper->SetClipList(list.Data(), 0), DDERR_INVALIDCLIPLIST);
    }
    DWORD bytes = 0;
    ASSERT_EQ(clipper->GetClipList(nullptr, nullptr, &bytes), DD_OK);
    ASSERT_EQ(bytes, good.bytes.size());
    List read{{0, 0, 0, 0}};
    --bytes;
    EXPECT_EQ(clipper->GetClipList(nullptr, read.Data(), &bytes), DDERR_REGIONTOOSMALL);
    ASSERT_EQ(clipper->GetClipList(nullptr, read.Data(), &bytes), DD_OK);
    EXPECT_EQ(std::memcmp(read.Data()->Buffer, good.Data()->Buffer, sizeof(RECT)), 0);
    RECT within = {2, 2, 4, 4};
    ASSERT_EQ(clipper->GetClipList(&within, nullptr, &bytes), DD_OK);
    EXPECT_EQ(bytes, sizeof(RGNDATAHEADER));
    EXPECT_LT(clipper->GetClipList(nullptr, nullptr, nullptr), 0);
    EXPECT_LT(clipper->SetHWnd(0, reinterpret_cast<HWND>(0x777)), 0);
}

TEST_F(Clippers, ASurfaceHoldsItsClipperUntilItTakesAnother) {
    Surface surface = Make(OffScreen(4, 4));
    const Com<IDirectDrawClipper> one = NewClipper(), two = NewClipper();
    EXPECT_EQ(surface->SetClipper(nullptr), DDERR_NOCLIPPERATTACHED);
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(surface->SetClipper(one.get()), DD_OK);
        EXPECT_EQ(CountOf(*one), 2u);
    }
    IDirectDrawClipper* found = nullptr;
    ASSERT_EQ(surface->GetClipper(&found), DD_OK);
    EXPECT_EQ(found, one.get());
    EXPECT_EQ(found->Release(), 2u);
    ASSERT_EQ(surface->SetClipper(two.get()), DD_OK);
    EXPECT_EQ(CountOf(*one), 1u);
    surface.reset();
    EXPECT_EQ(CountOf(*two), 1u);
}

TEST_F(Clippers, AWindowShowsWhatOthersLeaveOfItWhereverItIs) {
    for (const Format& format : kFormats) {
        Start(format);
        const HWND window = rastel::platform::CreateMemoryWindow({20, 10, 60, 50});
        rastel::platform::CreateMemoryWindow({40, 30, 70, 70});   // above it
        const Surface primary = Make(Primary()), source = Make(OffScreen(kWidth, kHeight));
        const Com<IDirectDrawClipper> clipper = NewClipper();
        const RECT whole = {0, 0, kWidth, kHeight};
        const DWORD white = format.red == 0 ? 0xFF : format.red | format.green | format.blue;
        ASSERT_EQ(clipper->SetHWnd(0, window), DD_OK);
        List list{};
        EXPECT_EQ(clipper->SetClipList(list.Data(), 0), DDERR_CLIPPERISUSINGHWND);
        ASSERT_EQ(Fill(*source, nullptr, white), DD_OK);
        const auto check = [&](RECT client, const char* what) {
            for (int y = 0; y < kHeight; ++y) {
                for (int x = 0; x < kWidth; ++x) {
                    const bool isIn = x >= client.left && x < client.right && y >= client.top && y < client.bottom &&
                                      !(x >= 40 && x < 70 && y >= 30 && y < 70);
                    ASSERT_EQ(IsWhite(x, y), isIn) << format.bits << ' ' << what << ' ' << x << ' ' << y;
                }
            }
        };
        const auto clear = [&] {
            const Surface other = Make(Primary());
            ASSERT_EQ(Fill(*other, nullptr, 0), DD_OK);
        };
        clear();
        ASSERT_EQ(primary->SetClipper(clipper.get()), DD_OK);
        ASSERT_EQ(Blt(*primary, whole, *source, whole), DD_OK);
        check({20, 10, 60, 50}, "copy");
        clear();
        ASSERT_EQ(Fill(*primary, nullptr, white), DD_OK);
        check({20, 10, 60, 50}, "fill");
        clear();
        rastel::platform::MoveMemoryWindow(window, {-10, 60, 50, 200});   // partly off the screen
        ASSERT_EQ(Blt(*primary, {-30, -30, 130, 130}, *source, whole), DD_OK);
        check({0, 60, 50, kHeight}, "moved");
        DWORD bytes = 0;
        ASSERT_EQ(clipper->GetClipList(nullptr, nullptr, &bytes), DD_OK);
        EXPECT_EQ(bytes, sizeof(RGNDATAHEADER) + 2 * sizeof(RECT));
        clear();
        rastel::platform::DestroyMemoryWindow(window);
        EXPECT_LT(Blt(*primary, whole, *source, whole), 0);
        EXPECT_LT(Fill(*primary, nullptr, white), 0);
        EXPECT_EQ(clipper->GetClipList(nullptr, nullptr, &bytes), DDERR_NOCLIPLIST);
        check({0, 0, 0, 0}, "gone");
        EXPECT_EQ(primary->SetClipper(nullptr), DD_OK);
        EXPECT_EQ(Fill(*primary, nullptr, white), DD_OK);
    }
}

}   // namespace
}   // namespace rastel::test

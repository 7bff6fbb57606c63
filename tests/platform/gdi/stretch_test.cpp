#include "gdi_test_support.h"

namespace rastel::test {
namespace {

struct Stretch {
    int x, y, width, height;
    int sourceX, sourceY, sourceWidth, sourceHeight;
};

std::string Name(const Stretch& s) {
    std::string name;
    for (const int value : {s.x, s.y, s.width, s.height, s.sourceX, s.sourceY, s.sourceWidth, s.sourceHeight}) {
        name += std::to_string(value) + " ";
    }
    return name;
}

bool Draw(const Section& target, const Section& source, const Stretch& s, DWORD operation = SRCCOPY) {
    return StretchBlt(target.Dc(), s.x, s.y, s.width, s.height, source.Dc(), s.sourceX, s.sourceY, s.sourceWidth,
                      s.sourceHeight, operation) != 0;
}

// The source position of a target position along one axis; INT32_MIN: none.
std::int64_t PickedBy(int position, int start, int size, int sourceStart, int sourceSize, int limit) {
    const std::int64_t length = std::abs(std::int64_t{size});
    const std::int64_t low = size < 0 ? std::int64_t{start} + size + 1 : start;
    if (position < low || position >= low + length) {
        return INT32_MIN;
    }
    std::int64_t step = position - low;
    if ((size < 0) != (sourceSize < 0)) {
        step = length - 1 - step;
    }
    const std::int64_t sourceLow = sourceSize < 0 ? std::int64_t{sourceStart} + sourceSize + 1 : sourceStart;
    const std::int64_t picked = sourceLow + step * std::abs(std::int64_t{sourceSize}) / length;
    return picked < 0 || picked >= limit ? INT32_MIN : picked;
}

TEST(Stretch, PicksByExactIntegersAndMirrors) {
    for (int round = 0; round < 400; ++round) {
        const Format& format = kFormats[static_cast<std::size_t>(RandomIn(0, 9))];
        Section source(RandomIn(1, 40), RandomIn(1, 12), format);
        Section target(50, 20, format);
        source.Randomize();
        target.Randomize();
        Section before(50, 20, format);
        before.Load(target.Copy());
        const Stretch s = {RandomIn(-60, 60), RandomIn(-20, 30), RandomIn(-90, 90), RandomIn(-40, 40),
                           RandomIn(-9, 20),  RandomIn(-5, 9),   RandomIn(-50, 50), RandomIn(-15, 15)};
        SetStretchBltMode(target.Dc(), RandomIn(0, 1) == 0 ? COLORONCOLOR : BLACKONWHITE);
        ASSERT_TRUE(Draw(target, source, s));
        for (int y = 0; y < 20; ++y) {
            const std::int64_t fromY = s.sourceHeight == 0
                                           ? INT32_MIN
                                           : PickedBy(y, s.y, s.height, s.sourceY, s.sourceHeight, source.Height());
            for (int x = 0; x < 50; ++x) {
                const std::int64_t fromX = s.sourceWidth == 0
                                               ? INT32_MIN
                                               : PickedBy(x, s.x, s.width, s.sourceX, s.sourceWidth, source.Width());
                const bool moved = fromX != INT32_MIN && fromY != INT32_MIN;
                const DWORD want =
                    moved ? source.Raw(static_cast<int>(fromX), static_cast<int>(fromY)) : before.Raw(x, y);
                ASSERT_EQ(target.Raw(x, y), want) << format.name << " " << Name(s) << "at " << x << "," << y;
            }
        }
    }
}

TEST(Stretch, ClippedIsTheCropOfTheWhole) {
    for (const int mode : {COLORONCOLOR, BLACKONWHITE, HALFTONE}) {
        for (int round = 0; round < 120; ++round) {
            const Format& from = kFormats[static_cast<std::size_t>(RandomIn(0, 9))];
            const Format& to = kFormats[static_cast<std::size_t>(RandomIn(0, 9))];
            Section source(33, 17, from);
            source.Randomize();
            Section whole(64, 40, to);
            Section part(64, 40, to);
            const Stretch s = {RandomIn(-30, 30), RandomIn(-20, 20), RandomIn(1, 100), RandomIn(-70, 70), 2, 1,
                               RandomIn(1, 33),   RandomIn(1, 17)};
            SetStretchBltMode(whole.Dc(), mode);
            SetStretchBltMode(part.Dc(), mode);
            Draw(whole, source, s);
            ExcludeClipRect(part.Dc(), 20, 5, 31, 22);
            const int left = RandomIn(0, 40);
            IntersectClipRect(part.Dc(), left, 3, left + 23, 37);
            Draw(part, source, s);
            for (int y = 0; y < 40; ++y) {
                for (int x = 0; x < 64; ++x) {
                    const bool shown =
                        x >= left && x < left + 23 && y >= 3 && y < 37 && !(x >= 20 && x < 31 && y >= 5 && y < 22);
                    ASSERT_EQ(part.Raw(x, y), shown ? whole.Raw(x, y) : 0u)
                        << from.name << " to " << to.name << ", mode " << mode << ", " << Name(s) << "at " << x << ","
                        << y;
                }
            }
        }
    }
}

TEST(Stretch, HalftoneAveragesTheCoveredBox) {
    Section source(9, 6, Plain32());
    Section target(3, 2, Plain32());
    source.Randomize();
    SetStretchBltMode(target.Dc(), HALFTONE);
    ASSERT_TRUE(Draw(target, source, {0, 0, 3, 2, 0, 0, 9, 6}));
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 3; ++x) {
            for (int shift = 0; shift < 32; shift += 8) {
                DWORD sum = 0;
                for (int i = 0; i < 9; ++i) {
                    sum += (source.Raw(x * 3 + i % 3, y * 3 + i / 3) >> shift) & 0xFF;
                }
                ASSERT_EQ((target.Raw(x, y) >> shift) & 0xFF, (sum + 4) / 9);
            }
        }
    }
}

TEST(Stretch, WildNumbersAreSafe) {
    Section source(5, 5, Plain32());
    Section target(7, 7, Plain32());
    const int wild[] = {INT32_MIN, INT32_MIN + 1, -65536, -1, 0, 1, 7, 65536, INT32_MAX - 1, INT32_MAX};
    for (const int mode : {COLORONCOLOR, HALFTONE}) {
        SetStretchBltMode(target.Dc(), mode);
        for (int round = 0; round < 3000; ++round) {
            const auto any = [&wild] { return wild[static_cast<std::size_t>(RandomIn(0, 9))]; };
            // One huge source averaged over one pixel would take its time; its visible part is 5 x 5 here.
            const Stretch s = {any(), any(), any(), any(), any(), any(), any(), any()};
            SetViewportOrgEx(target.Dc(), any(), any(), nullptr);
            Draw(target, source, s, round % 2 == 0 ? SRCCOPY : SRCINVERT);
        }
    }
}

}   // namespace
}   // namespace rastel::test

// The four triangle operations against the literal walk, within and beyond a face's limits, and their locks.
#include <climits>

#include "rastel/raster/triangle.h"
#include "tests/raster/textured.h"
#include "tests/support/plane.h"
#include "tests/support/test_store.h"

namespace rastel::test {

namespace {

class Ways : public ::testing::TestWithParam<Way> {};

// Level edges, equal vertices, lines, texels that step by one, and all sizes are likely.
FACE3D RandomFace(Random& random, const Stores& stores) {
    FACE3D face;
    const int reach = random.OneIn(8) ? 16000 : random.OneIn(3) ? 300 : random.OneIn(2) ? 60 : 15;
    const int middle = reach < 60 ? random.Pick(0, 30) : 20, flip = random.OneIn(4) ? -1 : 1;
    const bool stepsByOne = random.OneIn(4);
    for (auto& p : face.vertices) {
        p.x = middle + random.Pick(-reach, reach);
        p.y = random.OneIn(30) ? random.Pick(-1000000, 1000000) : middle + random.Pick(-reach, reach);
        p.u = std::clamp(stepsByOne ? p.x * flip + 9 : random.Pick(0, 130), 0, stores.source.GetWidth() - 1);
        p.v = std::clamp(stepsByOne ? p.y + 9 : random.Pick(0, 130), 0, stores.source.GetHeight() - 1);
    }
    auto &a = face.vertices[random.Pick(0, 2)], &b = face.vertices[random.Pick(0, 2)];
    a.y = random.OneIn(3) ? b.y : a.y;
    a.x = random.OneIn(6) ? b.x : a.x;
    a.v = random.OneIn(6) ? b.v : a.v;
    if (random.OneIn(6)) {
        face.vertices[1].x = (face.vertices[0].x + face.vertices[2].x) / 2;
        face.vertices[1].y = (face.vertices[0].y + face.vertices[2].y) / 2;
    }
    return face;
}

TEST_P(Ways, EqualTheLiteralWalk) {
    const Way way = GetParam();
    Random random;
    int changed = 0;
    for (int scene = 0; scene < 2000; ++scene) {
        const int side = random.OneIn(10) ? 120 : 40;
        Stores stores(random, random.Pick(1, side), random.Pick(1, side), random.Pick(1, side), random.Pick(1, side));
        Bytes expected = stores.Drawn(way);
        for (int i = 0; i < 20; ++i) {
            FACE3D face = RandomFace(random, stores);
            CRect rect(random.Pick(-9, 20), random.Pick(-9, 20), random.Pick(0, 50), random.Pick(0, 50));
            CRect* const clip = random.OneIn(2) ? nullptr : &rect;
            const Bytes before = expected;
            stores.DrawLiterally(way, face, clip, expected);
            changed += before != expected;
            ASSERT_EQ(stores.Draw(way, face, clip), 1);
            ASSERT_TRUE(stores.Drawn(way) == expected) << "scene " << scene << ", triangle " << i;
        }
    }
    EXPECT_GT(changed, 8000) << "too few triangles were seen";
}

// Their spans run down a texture whose rows lie a power of two apart, which has an order of drawing of its own.
TEST_P(Ways, EqualTheLiteralWalkWhereTheyCrowdTheCache) {
    Random random;
    int crowding = 0;
    for (int scene = 0; scene < 300; ++scene) {
        Stores stores(random, random.Pick(90, 200), random.Pick(1, 60), 1024, random.Pick(60, 120));
        FACE3D face;
        for (auto& p : face.vertices) {
            p = {random.Pick(-40, 240), random.Pick(-20, 80), random.Pick(500, 505), 0};
            p.v = std::clamp((random.OneIn(3) ? 200 - p.x : p.x) / 2, 0, stores.source.GetHeight() - 1);
        }
        const CRect limit = stores.target.GetRect();
        CRect rect(random.Pick(-9, 20), random.Pick(-9, 20), random.Pick(50, 300), random.Pick(0, 90));
        CRect* const clip = random.OneIn(2) ? nullptr : &rect;
        crowding +=
            !raster::HasNothingToDraw(face, limit) &&
            raster::CrowdsTheCache(face, GetParam() == Way::plane ? 1024 : 4096, GetParam() == Way::plane ? 1 : 4);
        Bytes expected = stores.Drawn(GetParam());
        stores.DrawLiterally(GetParam(), face, clip, expected);
        ASSERT_EQ(stores.Draw(GetParam(), face, clip), 1);
        ASSERT_TRUE(stores.Drawn(GetParam()) == expected) << "scene " << scene;
    }
    EXPECT_GT(crowding, 100);
}

int Wild(Random& random) {
    const int values[] = {random.Pick(INT_MIN, INT_MAX), INT_MIN, INT_MAX, random.Pick(-70000, 70000), -32769, 32768};
    return random.OneIn(2) ? random.Pick(-10, 60) : values[random.Pick(0, 5)];
}

TEST_P(Ways, DrawFacesBeyondTheLimitsWithTheEdgesOfTheirTexture) {
    Random random;
    for (int i = 0; i < 5000; ++i) {
        Stores stores(random, random.Pick(1, 20), random.Pick(1, 20), random.Pick(1, 20), random.Pick(1, 20));
        FACE3D face;
        for (auto& p : face.vertices) {
            p = {random.Pick(-10, 30), random.Pick(-10, 30), random.Pick(-10, 30), random.Pick(-10, 30)};
            (random.OneIn(4) ? p.x : random.OneIn(3) ? p.y : random.OneIn(2) ? p.u : p.v) = Wild(random);
        }
        CRect rect(Wild(random), Wild(random), Wild(random), Wild(random));
        CRect* const clip = random.OneIn(2) ? &rect : nullptr;
        Bytes expected = stores.Drawn(GetParam());
        stores.DrawLiterally<std::int64_t>(GetParam(), face, clip, expected);
        ASSERT_EQ(stores.Draw(GetParam(), face, clip), 1);
        ASSERT_TRUE(stores.Drawn(GetParam()) == expected) << "triangle " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Triangles, Ways, ::testing::ValuesIn(allWays));

TEST(Triangles, LockTheSourceFirstAndGiveItBackFirst) {
    using Log = std::vector<std::string>;
    Log log;
    TestStore target(4, 4, 0, &log), source(4, 4, 0, &log);
    Plane plane(2, 2);   // smaller than the source: its edge is repeated
    target.name = "t", source.name = "s";
    FACE3D face = {{{0, 0, 0, 0}, {3, 0, 3, 0}, {0, 3, 0, 3}}}, outside = {{{4, 0, 0, 0}, {9, 0, 0, 0}, {4, 3, 0, 0}}};
    const auto run = [&](FACE3D& drawn, int expected) {
        log.clear();
        EXPECT_EQ(target.BltTexturedTriangleAlpha(drawn, source, plane, nullptr), expected);
        return log;
    };
    EXPECT_EQ(run(face, 1), (Log{"s.LockData", "t.LockData", "s.UnlockData", "t.UnlockData"}));
    plane.Destroy();
    EXPECT_EQ(run(face, 0), (Log{"s.LockData", "t.LockData", "t.UnlockData", "s.UnlockData"}));
    target.refuseLock = true;
    EXPECT_EQ(run(face, 0), (Log{"s.LockData", "t.LockData", "s.UnlockData"}));
    source.refuseLock = true;
    EXPECT_EQ(run(face, 0), Log{"s.LockData"});
    EXPECT_EQ(run(outside, 1), Log{});   // nothing to draw is a success without a lock
}

}   // namespace

}   // namespace rastel::test

// Quads and rotation, on planes and on composites, against the literal walk over their two triangles.
#include <climits>
#include <limits>

#include "rastel/math/plane_geometry.h"
#include "tests/composite/composite_fixture.h"
#include "tests/raster/textured.h"

namespace rastel::test {

namespace {

struct Quad {
    Quad(Random& random, const Stores& stores)
        : angle(random.OneIn(4)    ? 0
                : random.OneIn(20) ? std::numeric_limits<double>::quiet_NaN()
                                   : random.Pick(-400, 400) / 100.0),
          centre(random.Pick(-10, 50), random.Pick(-10, 50)),
          to(random.Pick(-9, 20), random.Pick(-9, 20), random.Pick(5, 50), random.Pick(5, 50)),
          from(random.Pick(-5, stores.source.GetWidth() - 1), random.Pick(-5, 0), 100, 100),
          clip(random.Pick(-9, 9), random.Pick(-9, 9), random.Pick(10, 60), random.Pick(10, 60)),
          effective(stores.source.GetRect()) {
        ::IntersectRect(&effective, &effective, &from);
        for (CPoint& corner : corners) {
            const int reach = random.OneIn(12) ? INT_MAX : 60;
            corner = CPoint(random.Pick(-reach / 3, reach), random.Pick(-reach / 3, reach));
        }
    }
    void DrawLiterally(Stores& stores, Way way, CRect* limit, Bytes& bytes) const {
        const auto vertex = [&](int corner, int u, int v) {
            return FACE3D::Vertex{corners[corner].x, corners[corner].y, u, v};
        };
        const int right = effective.right - 1, bottom = effective.bottom - 1;
        const auto first = vertex(0, effective.left, effective.top), opposite = vertex(2, right, bottom);
        stores.DrawLiterally<std::int64_t>(way, {{first, opposite, vertex(3, effective.left, bottom)}}, limit, bytes);
        stores.DrawLiterally<std::int64_t>(way, {{first, vertex(1, right, effective.top), opposite}}, limit, bytes);
    }
    CPoint corners[4];
    double angle;
    CPoint centre;
    CRect to, from, clip, effective;
};

// Composites over the stores; the source shows itself as its plane, else its key, says.
struct Composites {
    Composites(Stores& stores, Way way, bool targetHasPlane) {
        target.SetSurface(&stores.target);
        source.SetSurface(&stores.source);
        target.SetAlphaChannel(targetHasPlane ? &stores.targetPlane : nullptr);
        source.SetAlphaChannel(way == Way::blend ? &stores.sourcePlane : nullptr);
        source.SetColorKey(way == Way::copy ? CAdvSurface::noColorKey : Stores::key);
    }
    CAdvSurface target, source;
};

using Quads = CompositeTest;

TEST_F(Quads, AreTwoTrianglesOfTheLiteralWalk) {
    Random random;
    for (int i = 0; i < 4000; ++i) {
        Stores stores(random, random.Pick(1, 50), random.Pick(1, 50), random.Pick(1, 50), random.Pick(1, 50));
        Quad quad(random, stores);
        const Way way = allWays[i % 4];
        const bool isTurned = random.OneIn(2);
        CRect* const to = random.OneIn(4) ? nullptr : &quad.to;
        if (isTurned) {
            RotateRect(quad.corners, to ? *to : stores.target.GetRect(), quad.angle, quad.centre);
        }
        Bytes expected = stores.Drawn(way);
        const Bytes plane = stores.targetPlane.bytes;
        quad.DrawLiterally(stores, way, &quad.clip, expected);
        // Turned through a plane only onto a target without one: between planes is another way.
        Composites composites(stores, way, !(isTurned && way == Way::blend) && random.OneIn(2));
        CAdvSurface &target = composites.target, &source = composites.source;
        ASSERT_EQ(
            way != Way::plane
                ? (isTurned ? target.BltRotate(to, quad.angle, quad.centre, source, &quad.from, &quad.clip)
                            : target.BltTexture(quad.corners, source, &quad.from, &quad.clip))
            : isTurned
                ? stores.targetPlane.BltRotate(to, quad.angle, quad.centre, stores.sourcePlane, &quad.from, &quad.clip)
                : stores.targetPlane.BltTexture(quad.corners, nullptr, stores.sourcePlane, &quad.from, &quad.clip),
            1);
        ASSERT_TRUE(stores.Drawn(way) == expected) << "quad " << i;
        ASSERT_TRUE(way == Way::plane || stores.targetPlane.bytes == plane) << "a mark on the target's plane";
    }
}

TEST_F(Quads, TurnedBetweenPlanesGoThroughACompositeOfTheirBounds) {
    Random random;
    int drawn = 0;
    for (int i = 0; i < 1000; ++i) {
        Stores stores(random, random.Pick(1, 50), random.Pick(1, 50), random.Pick(1, 50), random.Pick(1, 50));
        Quad quad(random, stores);
        RotateRect(quad.corners, quad.to, quad.angle, quad.centre);
        const CRect bound = GetBoundingRectOfVertexList(quad.corners);
        Composites composites(stores, Way::blend, true);
        const Bytes oldColors = stores.target.bytes, oldPlane = stores.targetPlane.bytes;
        const int result =
            composites.target.BltRotate(&quad.to, quad.angle, quad.centre, composites.source, &quad.from, &quad.clip);
        const Bytes colors = std::exchange(stores.target.bytes, oldColors);
        const Bytes plane = std::exchange(stores.targetPlane.bytes, oldPlane);
        drawn += colors != oldColors;
        if (bound.Width() < 1 || bound.Height() < 1) {
            ASSERT_EQ(result, 0);
            continue;
        }
        for (CPoint& corner : quad.corners) {
            corner -= bound.TopLeft();
        }
        Stores box(random, bound.Width(), bound.Height(), stores.source.GetWidth(), stores.source.GetHeight());
        box.source.bytes = stores.source.bytes;
        box.sourcePlane.bytes = stores.sourcePlane.bytes;
        std::fill(box.targetPlane.bytes.begin(), box.targetPlane.bytes.end(), static_cast<unsigned char>(0));
        quad.DrawLiterally(box, Way::copy, nullptr, box.target.bytes);
        quad.DrawLiterally(box, Way::plane, nullptr, box.targetPlane.bytes);
        Composites boxed(box, Way::copy, true);
        ASSERT_EQ(composites.target.Blt(bound.left, bound.top, boxed.target, nullptr, &quad.clip), result);
        ASSERT_TRUE(stores.target.bytes == colors && stores.targetPlane.bytes == plane) << "quad " << i;
    }
    EXPECT_GT(drawn, 150);
}

TEST_F(Quads, RefuseWhatHasNoPixels) {
    Random random;
    Stores stores(random, 30, 20, 9, 7);
    Composites composites(stores, Way::blend, true);
    CAdvSurface &target = composites.target, &source = composites.source, hollow;
    CPoint corners[4] = {{0, 0}, {20, 0}, {20, 15}, {0, 15}};
    CRect miss(40, 40, 50, 50), rect(2, 2, 20, 15), noArea(5, 5, 5, 9), huge(-2000000000, 0, 2000000000, 9);
    const Bytes colors = stores.target.bytes, plane = stores.targetPlane.bytes;
    const auto texture = [&](CAdvSurface& to, CAdvSurface& from, CPoint* points, CRect* sourceRect) {
        return to.BltTexture(points, from, sourceRect, nullptr);
    };
    const auto rotate = [&](CAdvSurface& to, CAdvSurface& from, CRect* targetRect, CRect* sourceRect) {
        return to.BltRotate(targetRect, 0.5, CPoint(10, 10), from, sourceRect, nullptr);
    };
    EXPECT_FALSE(texture(hollow, source, corners, nullptr) || texture(target, hollow, corners, nullptr));
    EXPECT_FALSE(rotate(hollow, source, &rect, nullptr) || rotate(target, hollow, &rect, nullptr));
    EXPECT_FALSE(texture(target, source, nullptr, nullptr) || texture(target, source, corners, &miss));
    EXPECT_FALSE(rotate(target, source, &rect, &miss) || rotate(target, source, &huge, nullptr));
    EXPECT_EQ(target.BltRotate(&noArea, 0, CPoint(), source, nullptr, nullptr), 0);
    EXPECT_EQ(stores.targetPlane.BltTexture(nullptr, nullptr, stores.sourcePlane, nullptr, nullptr), 0);
    EXPECT_EQ(stores.targetPlane.BltTexture(corners, nullptr, stores.sourcePlane, &miss, nullptr), 0);
    EXPECT_EQ(stores.targetPlane.BltTexture(corners, nullptr, stores.targetPlane, nullptr, nullptr), 0);
    stores.sourcePlane.isLocked = true;
    EXPECT_FALSE(texture(target, source, corners, nullptr));
    EXPECT_FALSE(stores.target.isLocked || stores.source.isLocked || stores.targetPlane.isLocked);
    EXPECT_TRUE(stores.target.bytes == colors && stores.targetPlane.bytes == plane);
}

}   // namespace

}   // namespace rastel::test

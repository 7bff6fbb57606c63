// Which pixels a triangle covers, and what it leaves in them.
#include <array>
#include <cmath>
#include <limits>
#include <random>

#include "tests/platform/d3d9/device_support.h"

namespace {

using rastel::test::deviceSide;
using rastel::test::flatFormat;
using rastel::test::FlatVertex;
using rastel::test::OnDevice;

class Drawing : public OnDevice {
protected:
    // Pixels drawn twice show, as the colours add up.
    void AddUp() {
        device->SetRenderState(D3DRS_ZENABLE, FALSE);
        device->SetRenderState(D3DRS_ALPHABLENDENABLE, TRUE);
        device->SetRenderState(D3DRS_SRCBLEND, D3DBLEND_ONE);
        device->SetRenderState(D3DRS_DESTBLEND, D3DBLEND_ONE);
    }
};

TEST_F(Drawing, APixelBelongsToTheTriangleThatHoldsItsPlace) {
    // Without perspective, pixel (x, y) stands at (x, y); left and top edges own what lies on them.
    DrawFlat(D3DPT_TRIANGLESTRIP, 2,
             {{10, 10, 0, 1, 0xFFFFFFFF, 0, 0},
              {20, 10, 0, 1, 0xFFFFFFFF, 0, 0},
              {10, 15, 0, 1, 0xFFFFFFFF, 0, 0},
              {20, 15, 0, 1, 0xFFFFFFFF, 0, 0}});
    const std::vector<DWORD> pixels = Pixels(*Back());
    for (int i = 0; i < deviceSide * deviceSide; ++i) {
        const int x = i % deviceSide, y = i / deviceSide;
        const bool isIn = x >= 10 && x < 20 && y >= 10 && y < 15;
        ASSERT_EQ(pixels[static_cast<std::size_t>(i)], isIn ? 0xFFFFFFu : 0u) << x << ' ' << y;
    }
}

TEST_F(Drawing, TrianglesAroundAPointCoverEachPixelOnce) {
    AddUp();
    std::minstd_rand random(7);
    std::uniform_real_distribution<float> inside(1, deviceSide - 1.0f), outside(-500, 500);
    for (int round = 0; round < 60; ++round) {
        // Corners far outside, so that the sides of the target cut every edge that runs from the point.
        const float reach = 400 + outside(random) / 4;
        const FlatVertex middle{inside(random), inside(random), 0.5f, 1, 0xFF112233, 0, 0};
        std::vector<FlatVertex> fan{middle};
        for (const auto& [x, y] :
             {std::pair{-1.0f, -1.0f}, {1.0f, -1.0f}, {1.0f, 1.0f}, {-1.0f, 1.0f}, {-1.0f, -1.0f}}) {
            fan.push_back({32 + x * reach, 32 + y * reach + (x < 0 && y < 0 ? 0 : outside(random) / 8), 0.5f, 1,
                           0xFF112233, 0, 0});
        }
        device->Clear(0, nullptr, D3DCLEAR_TARGET, 0xFF000000, 1, 0);
        DrawFlat(D3DPT_TRIANGLEFAN, 4, fan);
        const std::vector<DWORD> pixels = Pixels(*Back());
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            ASSERT_EQ(pixels[i], 0x112233u) << "round " << round << " at " << i % deviceSide << ' ' << i / deviceSide;
        }
    }
}

TEST_F(Drawing, TheNearPlaneCutsWhatStandsBehindTheEye) {
    // A floor from behind the eye to the far distance: the lower half of the picture and nothing else.
    D3DMATRIX projection{};
    projection._11 = projection._22 = projection._34 = 1;
    projection._33 = 100 / 99.0f;
    projection._43 = -projection._33;
    device->SetTransform(D3DTS_PROJECTION, &projection);
    device->SetFVF(D3DFVF_XYZ | D3DFVF_DIFFUSE);
    struct Vertex {
        float x, y, z;
        DWORD diffuse;
    };
    const Vertex floor[] = {
        {-900, -1, -50, 0xFF00FF00}, {900, -1, -50, 0xFF00FF00}, {-900, -1, 90, 0xFF00FF00}, {900, -1, 90, 0xFF00FF00}};
    device->BeginScene();
    EXPECT_EQ(device->DrawPrimitiveUP(D3DPT_TRIANGLESTRIP, 2, floor, sizeof(Vertex)), D3D_OK);
    device->EndScene();
    EXPECT_EQ(PixelAt(3, 63), 0x00FF00u);
    EXPECT_EQ(PixelAt(60, 34), 0x00FF00u);
    EXPECT_EQ(PixelAt(32, 31), 0u);
    EXPECT_EQ(PixelAt(32, 1), 0u);
}

TEST_F(Drawing, OneSideCanBeLeftOut) {
    const std::vector<FlatVertex> clockwise = {
        {0, 0, 0, 1, 0xFFFFFFFF, 0, 0}, {64, 0, 0, 1, 0xFFFFFFFF, 0, 0}, {0, 64, 0, 1, 0xFFFFFFFF, 0, 0}};
    for (const auto& [cull, expected] :
         {std::pair{D3DCULL_CCW, 0xFFFFFFu}, {D3DCULL_CW, 0u}, {D3DCULL_NONE, 0xFFFFFFu}}) {
        device->Clear(0, nullptr, D3DCLEAR_TARGET | D3DCLEAR_ZBUFFER, 0, 1, 0);
        device->SetRenderState(D3DRS_CULLMODE, cull);
        DrawFlat(D3DPT_TRIANGLELIST, 1, clockwise);
        EXPECT_EQ(PixelAt(5, 5), expected) << cull;
    }
}

TEST_F(Drawing, TheDepthTestComparesAsTold) {
    const struct {
        D3DCMPFUNC function;
        bool nearer, same, farther;
    } cases[] = {{D3DCMP_NEVER, false, false, false},      {D3DCMP_LESS, true, false, false},
                 {D3DCMP_EQUAL, false, true, false},       {D3DCMP_LESSEQUAL, true, true, false},
                 {D3DCMP_GREATER, false, false, true},     {D3DCMP_NOTEQUAL, true, false, true},
                 {D3DCMP_GREATEREQUAL, false, true, true}, {D3DCMP_ALWAYS, true, true, true}};
    for (const auto& c : cases) {
        for (const auto& [z, isSeen] : {std::pair{0.25f, c.nearer}, {0.5f, c.same}, {0.75f, c.farther}}) {
            device->Clear(0, nullptr, D3DCLEAR_TARGET | D3DCLEAR_ZBUFFER, 0, 0.5f, 0);
            device->SetRenderState(D3DRS_ZFUNC, c.function);
            DrawSheet(0xFFFFFFFF, z);
            EXPECT_EQ(PixelAt(32, 32), isSeen ? 0xFFFFFFu : 0u) << c.function << ' ' << z;
        }
    }
    device->SetRenderState(D3DRS_ZFUNC, D3DCMP_LESSEQUAL);
    device->Clear(0, nullptr, D3DCLEAR_TARGET | D3DCLEAR_ZBUFFER, 0, 1, 0);
    device->SetRenderState(D3DRS_ZWRITEENABLE, FALSE);
    DrawSheet(0xFF0000FF, 0.25f);
    DrawSheet(0xFF00FF00, 0.75f);   // the nearer sheet left no depth
    EXPECT_EQ(PixelAt(32, 32), 0x00FF00u);
    EXPECT_EQ(device->Clear(0, nullptr, D3DCLEAR_ZBUFFER, 0, std::nanf(""), 0), D3DERR_INVALIDCALL);
    EXPECT_EQ(device->Clear(0, nullptr, D3DCLEAR_ZBUFFER, 0, 1.5f, 0), D3DERR_INVALIDCALL);
}

TEST_F(Drawing, TextureAndColorAreJoinedByTheStage) {
    const auto texture = MakeTexture(1, 1, {0x80FF8000});
    device->SetTexture(0, texture.get());
    const auto drawn = [&](DWORD operation, DWORD first, DWORD second) {
        device->SetTextureStageState(0, D3DTSS_COLOROP, operation);
        device->SetTextureStageState(0, D3DTSS_COLORARG1, first);
        device->SetTextureStageState(0, D3DTSS_COLORARG2, second);
        DrawSheet(0xFF8080FF);
        return PixelAt(20, 40);
    };
    EXPECT_EQ(drawn(D3DTOP_MODULATE, D3DTA_TEXTURE, D3DTA_CURRENT), 0x804000u);
    EXPECT_EQ(drawn(D3DTOP_SELECTARG1, D3DTA_TEXTURE, D3DTA_DIFFUSE), 0xFF8000u);
    EXPECT_EQ(drawn(D3DTOP_SELECTARG2, D3DTA_TEXTURE, D3DTA_DIFFUSE), 0x8080FFu);
    EXPECT_EQ(drawn(D3DTOP_DISABLE, D3DTA_TEXTURE, D3DTA_DIFFUSE), 0x8080FFu);
    EXPECT_EQ(drawn(D3DTOP_ADD, D3DTA_TEXTURE, D3DTA_DIFFUSE), 0xFFFFFFu);

    device->SetTextureStageState(0, D3DTSS_COLOROP, D3DTOP_SELECTARG1);
    device->Clear(0, nullptr, D3DCLEAR_TARGET, 0xFF0000FF, 1, 0);
    device->SetRenderState(D3DRS_ALPHABLENDENABLE, TRUE);
    device->SetRenderState(D3DRS_SRCBLEND, D3DBLEND_SRCALPHA);
    device->SetRenderState(D3DRS_DESTBLEND, D3DBLEND_INVSRCALPHA);
    DrawSheet(0xFFFFFFFF);
    EXPECT_EQ(PixelAt(20, 40), 0x80407Fu);
    device->SetRenderState(D3DRS_ALPHATESTENABLE, TRUE);
    device->SetRenderState(D3DRS_ALPHAREF, 0x81);
    device->SetRenderState(D3DRS_ALPHAFUNC, D3DCMP_GREATEREQUAL);
    device->Clear(0, nullptr, D3DCLEAR_TARGET, 0xFF0000FF, 1, 0);
    DrawSheet(0xFFFFFFFF);
    EXPECT_EQ(PixelAt(20, 40), 0x0000FFu);
}

TEST_F(Drawing, TexturesRepeatMirrorOrEndAtTheirSides) {
    const auto texture = MakeTexture(2, 1, {0xFFFF0000, 0xFF0000FF});
    device->SetTexture(0, texture.get());
    const auto row = [&](D3DTEXTUREADDRESS rule) {
        device->SetSamplerState(0, D3DSAMP_ADDRESSU, rule);
        DrawSheet(0xFFFFFFFF, 0.5f, 2);   // four texels across
        std::array<DWORD, 4> seen;
        for (int i = 0; i < 4; ++i) {
            seen[static_cast<std::size_t>(i)] = PixelAt(i * 16 + 8, 8);
        }
        return seen;
    };
    constexpr DWORD red = 0xFF0000, blue = 0x0000FF;
    EXPECT_EQ(row(D3DTADDRESS_WRAP), (std::array<DWORD, 4>{red, blue, red, blue}));
    EXPECT_EQ(row(D3DTADDRESS_MIRROR), (std::array<DWORD, 4>{red, blue, blue, red}));
    EXPECT_EQ(row(D3DTADDRESS_CLAMP), (std::array<DWORD, 4>{red, blue, blue, blue}));
    device->SetSamplerState(0, D3DSAMP_MAGFILTER, D3DTEXF_LINEAR);
    DrawSheet(0xFFFFFFFF, 0.5f, 1);
    EXPECT_EQ(PixelAt(32, 8), 0x800080u);   // half way between the middles of two texels
    EXPECT_EQ(PixelAt(10, 8), red);
}

TEST_F(Drawing, VerticesMayCarryMoreThanIsLookedAt) {
    struct Vertex {
        float x, y, z, rhw, size;
        DWORD diffuse, specular;
        float first[3], second[1];
    };
    static_assert(sizeof(Vertex) == 44);
    constexpr DWORD threeNumbersThenOne = 1u << 16 | 3u << 18;
    const auto texture = MakeTexture(2, 1, {0xFFFF0000, 0xFF0000FF});
    device->SetTexture(0, texture.get());
    device->SetFVF(D3DFVF_XYZRHW | D3DFVF_PSIZE | D3DFVF_DIFFUSE | D3DFVF_SPECULAR | D3DFVF_TEX2 | threeNumbersThenOne);
    const Vertex corners[] = {{0, 0, 0, 1, 9, 0xFFFFFFFF, 0xFF, {0, 0, 7}, {5}},
                              {128, 0, 0, 1, 9, 0xFFFFFFFF, 0xFF, {2, 0, 7}, {5}},
                              {0, 128, 0, 1, 9, 0xFFFFFFFF, 0xFF, {0, 2, 7}, {5}}};
    device->BeginScene();
    EXPECT_EQ(device->DrawPrimitiveUP(D3DPT_TRIANGLELIST, 1, corners, sizeof(Vertex)), D3D_OK);
    EXPECT_EQ(device->DrawPrimitiveUP(D3DPT_TRIANGLELIST, 1, corners, sizeof(Vertex) - 4), D3DERR_INVALIDCALL);
    device->SetFVF(D3DFVF_XYZRHW | 15u << 8);
    EXPECT_EQ(device->DrawPrimitiveUP(D3DPT_TRIANGLELIST, 1, corners, 500), D3DERR_INVALIDCALL);   // too many sets
    device->EndScene();
    EXPECT_EQ(PixelAt(10, 10), 0xFF0000u);
    EXPECT_EQ(PixelAt(40, 10), 0x0000FFu);
}

TEST_F(Drawing, LightThatIsEverywhereShowsTheMaterial) {
    D3DMATERIAL9 material{};
    material.Ambient = {1, 0.5f, 0, 1};
    material.Emissive = {0, 0, 1, 0};
    EXPECT_EQ(device->SetMaterial(&material), D3D_OK);
    device->SetRenderState(D3DRS_LIGHTING, TRUE);
    device->SetRenderState(D3DRS_AMBIENT, 0xFF8080FF);
    device->SetFVF(D3DFVF_XYZ | D3DFVF_NORMAL);
    const float corners[][6] = {{-3, -1, 0.5f, 0, 0, 1}, {0, 5, 0.5f, 0, 0, 1}, {3, -1, 0.5f, 0, 0, 1}};
    device->BeginScene();
    EXPECT_EQ(device->DrawPrimitiveUP(D3DPT_TRIANGLELIST, 1, corners, sizeof(corners[0])), D3D_OK);
    device->EndScene();
    EXPECT_EQ(PixelAt(32, 32), 0x8040FFu);
    material.Ambient.r = std::numeric_limits<float>::quiet_NaN();
    device->SetMaterial(&material);
    device->BeginScene();
    device->DrawPrimitiveUP(D3DPT_TRIANGLELIST, 1, corners, sizeof(corners[0]));
    device->EndScene();
    EXPECT_EQ(PixelAt(32, 32), 0x8040FFu);   // no number, nothing drawn
}

TEST_F(Drawing, AnyNumbersAtAllStayInsideTheTarget) {
    struct Vertex {
        float position[4];
        DWORD diffuse;
        float u, v;
    };
    std::minstd_rand random(11);
    std::uniform_real_distribution<float> mantissa(-2, 2);
    std::uniform_int_distribution<int> exponent(-140, 127), choice(0, 9);
    const auto number = [&] {
        const int kind = choice(random);
        return kind == 0 ? 0.0f : kind < 5 ? mantissa(random) * 40 : std::ldexp(mantissa(random), exponent(random));
    };
    const auto texture = MakeTexture(2, 2, {1, 2, 3, 4});
    device->SetTexture(0, texture.get());
    device->SetRenderState(D3DRS_ALPHABLENDENABLE, TRUE);
    device->SetRenderState(D3DRS_DESTBLEND, D3DBLEND_INVSRCCOLOR);
    device->BeginScene();
    for (int round = 0; round < 3000; ++round) {
        Vertex corners[3];
        for (Vertex& corner : corners) {
            corner = {{number(), number(), number(), number()}, static_cast<DWORD>(random()), number(), number()};
        }
        D3DMATRIX matrix;
        for (auto& row : matrix.m) {
            for (float& cell : row) {
                cell = number();
            }
        }
        device->SetTransform(D3DTS_PROJECTION, &matrix);
        device->SetSamplerState(0, D3DSAMP_ADDRESSU, static_cast<DWORD>(1 + round % 3));
        device->SetSamplerState(0, D3DSAMP_MAGFILTER, static_cast<DWORD>(round % 3));
        device->SetFVF(flatFormat);
        EXPECT_EQ(device->DrawPrimitiveUP(D3DPT_TRIANGLELIST, 1, corners, sizeof(Vertex)), D3D_OK);
        device->SetFVF(D3DFVF_XYZ | D3DFVF_DIFFUSE | D3DFVF_TEX1);
        EXPECT_EQ(device->DrawPrimitiveUP(D3DPT_TRIANGLELIST, 1, corners, sizeof(Vertex)), D3D_OK);
    }
    device->EndScene();   // the sanitizers say the rest
}

}   // namespace

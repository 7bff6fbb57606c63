// Stores, and the four ways of drawing a triangle beside what they should come to.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "rastel/platform/user.h"
#include "tests/raster/literal_walk.h"
#include "tests/storm/scene.h"

namespace rastel::test {

using Bytes = std::vector<unsigned char>;

enum class Way { copy, key, blend, plane };
constexpr Way allWays[] = {Way::copy, Way::key, Way::blend, Way::plane};

struct Random {
    int Pick(int low, int high) {
        return static_cast<int>(std::uniform_int_distribution<long long>(low, high)(engine));
    }
    bool OneIn(int n) { return Pick(1, n) == 1; }
    std::mt19937 engine;
};

// A store's bytes end with its last row, and those between rows count in every comparison.
struct Stores {
    Stores(Random& random, int targetWidth, int targetHeight, int sourceWidth, int sourceHeight)
        : target(targetWidth, targetHeight, targetWidth % 6),
          source(sourceWidth, sourceHeight, sourceWidth % 16 == 0 ? 0 : sourceWidth % 7),
          targetPlane(targetWidth, targetHeight, targetWidth % 4),
          sourcePlane(sourceWidth, sourceHeight, sourceWidth % 16 == 0 ? 0 : sourceWidth % 5) {
        for (Bytes* const bytes : {&target.bytes, &source.bytes, &targetPlane.bytes, &sourcePlane.bytes}) {
            for (unsigned char& byte : *bytes) {
                byte = static_cast<unsigned char>(random.OneIn(4) ? 0 : random.OneIn(2) ? 255 : random.Pick(0, 255));
            }
        }
    }

    int Draw(Way way, FACE3D& face, CRect* clip) {
        return way == Way::copy    ? target.BltTexturedTriangle(face, source, clip)
               : way == Way::key   ? target.BltTexturedTriangleTrans(face, source, key, clip)
               : way == Way::blend ? target.BltTexturedTriangleAlpha(face, source, sourcePlane, clip)
                                   : targetPlane.BltTexturedTriangle(face, sourcePlane, clip);
    }

    Bytes& Drawn(Way way) { return way == Way::plane ? targetPlane.bytes : target.bytes; }

    // What Draw should leave of `bytes`. In 64 bits any face will do; its texels are held inside the source.
    template <class Word = std::int32_t>
    void DrawLiterally(Way way, const FACE3D& face, const CRect* clip, Bytes& bytes) {
        CRect limit = target.GetRect();
        ::IntersectRect(&limit, &limit, clip ? clip : &limit);
        const auto at = [](auto& all, int row, int pitch, int offset) {
            return &all[static_cast<size_t>(row * pitch + offset)];
        };
        LiteralWalk<Word>(face, limit, [&](int x, int y, Word u, Word v) {
            const int column = static_cast<int>(std::clamp<Word>(u, 0, source.GetWidth() - 1));
            const int row = static_cast<int>(std::clamp<Word>(v, 0, source.GetHeight() - 1));
            EXPECT_TRUE(sizeof(Word) > 4 || (column == u && row == v)) << "a texel outside the source";
            const unsigned char* const s = at(source.bytes, row, source.GetPitch(), column * 4);
            const unsigned char a = *at(sourcePlane.bytes, row, sourcePlane.GetPitch(), column);
            unsigned char* const t =
                way == Way::plane ? at(bytes, y, targetPlane.GetPitch(), x) : at(bytes, y, target.GetPitch(), x * 4);
            if (way == Way::plane) {
                *t = a;
            } else if (way == Way::copy) {
                std::memcpy(t, s, 4);
            } else if (way == Way::blend) {
                const int w = a * 256 / 255;
                for (int i = 0; i < 3; ++i) {
                    t[i] = static_cast<unsigned char>((t[i] * (256 - w) + s[i] * w) >> 8);
                }
            } else if (s[0] != 0xFF || s[1] != 0 || s[2] != 0xFF) {
                std::memcpy(t, s, 3);
                t[3] = 0;
            }
        });
    }

    static constexpr DWORD key = 0x77FF00FF;   // its top byte plays no part
    storm::ColorStore target, source;
    storm::PlaneStore targetPlane, sourcePlane;
};

}   // namespace rastel::test

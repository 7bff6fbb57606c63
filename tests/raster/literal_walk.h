// The walk over a triangle in the plainest words, one pixel after the other: what the library's walk must equal.
#pragma once

#include <algorithm>
#include <type_traits>
#include <utility>

#include "rastel/platform/framework.h"
#include "rastel/raster/face3d.h"

namespace rastel::test {

// A 16.16 number in a signed word of the given width, which wraps.
template <class Word>
struct Fixed {
    using Bits = std::make_unsigned_t<Word>;
    Word word;
    static Fixed Of(Word whole) { return {static_cast<Word>(static_cast<Bits>(whole) << 16)}; }
    Word Floor() const { return word >> 16; }
    friend Fixed operator+(Fixed a, Fixed b) { return {static_cast<Word>(Bits(a.word) + Bits(b.word))}; }
    friend Fixed operator-(Fixed a, Fixed b) { return {static_cast<Word>(Bits(a.word) - Bits(b.word))}; }
    friend Fixed operator*(Fixed a, Word n) { return {static_cast<Word>(Bits(a.word) * Bits(n))}; }
    friend Fixed operator/(Fixed a, Word n) { return {a.word / n}; }
};

// drawPixel(x, y, column, row) gets each pixel and its texel.
template <class Word, class DrawPixel>
void LiteralWalk(const FACE3D& face, const CRect& clip, DrawPixel drawPixel) {
    using Number = Fixed<Word>;
    const auto& p = face.vertices;
    const auto [xLow, xHigh] = std::minmax({p[0].x, p[1].x, p[2].x});
    const auto [yLow, yHigh] = std::minmax({p[0].y, p[1].y, p[2].y});
    if (yHigh < clip.top || yLow >= clip.bottom || xHigh < clip.left || xLow >= clip.right || xLow == xHigh ||
        yLow == yHigh) {
        return;
    }
    int top = 0, mid = 1, bot = 2;
    if (p[1].y < p[0].y) {
        top = 1, mid = 0;
    }
    if (p[2].y < p[top].y) {
        bot = top, top = 2;
    }
    if (p[bot].y < p[mid].y) {
        std::swap(mid, bot);
    }
    FACE3D::Vertex T = p[top], M = p[mid], B = p[bot];
    const bool isFlatTop = T.y == M.y, isFlatBottom = !isFlatTop && M.y == B.y;
    if (isFlatTop && M.x < T.x) {
        std::swap(T, M);
    }
    if (isFlatBottom && B.x < M.x) {
        std::swap(M, B);
    }

    struct Triple {
        Number x, u, v, sx, su, sv;
        Triple(const FACE3D::Vertex& P, const FACE3D::Vertex& Q, Word y) {
            const Word height = Word(Q.y) - P.y, down = y - P.y;
            sx = Number::Of(Word(Q.x) - P.x) / height, x = Number::Of(P.x) + sx * down;
            su = Number::Of(Word(Q.u) - P.u) / height, u = Number::Of(P.u) + su * down;
            sv = Number::Of(Word(Q.v) - P.v) / height, v = Number::Of(P.v) + sv * down;
        }
    };
    const int y0 = std::max<int>(T.y, clip.top), yN = std::min<int>(B.y, clip.bottom - 1);
    if (y0 > yN) {
        return;
    }
    const bool bends = !isFlatTop && !isFlatBottom && M.y >= clip.top;
    Triple L(T, isFlatBottom ? M : B, y0), R = isFlatTop || (!isFlatBottom && !bends) ? Triple(M, B, y0)
                                               : isFlatBottom                         ? Triple(T, B, y0)
                                                                                      : Triple(T, M, y0);
    bool shortIsLeft = false;
    if (!isFlatTop && !isFlatBottom) {   // so far the long edge stands on the left
        shortIsLeft = bends ? L.sx.word >= R.sx.word : L.sx.word <= R.sx.word;
        if (shortIsLeft) {
            std::swap(L, R);
        }
    }

    const Number half = {0x8000};
    for (int y = y0; y <= yN; ++y) {
        Word xl = (L.x + half).Floor(), xr = (R.x + half).Floor();
        Number du = {0}, dv = {0}, u = L.u + half, v = L.v + half;
        if (xr - xl > 0) {
            du = (R.u - L.u) / (xr - xl), dv = (R.v - L.v) / (xr - xl);
        }
        if (xl < clip.left) {
            const Word n = clip.left - xl;
            u = u + du * n, v = v + dv * n, xl = clip.left;
        }
        for (Word x = xl; x <= std::min<Word>(xr, clip.right - 1); ++x, u = u + du, v = v + dv) {
            drawPixel(static_cast<int>(x), y, u.Floor(), v.Floor());
        }
        for (Triple* const t : {&L, &R}) {
            t->x = t->x + t->sx, t->u = t->u + t->su, t->v = t->v + t->sv;
        }
        if (bends && y == M.y) {
            (shortIsLeft ? L : R) = Triple(M, B, Word(y) + 1);
        }
    }
}

}   // namespace rastel::test

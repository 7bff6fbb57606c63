#include "rastel/raster/span_tiles.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "rastel/raster/texture_spans.h"
#include "rastel/raster/triangle_walk.h"

namespace rastel::raster {

namespace {

// What a tile can't take: a span as it is, which crosses rows of the texture.
template <int bytesPerPixel>
void DrawAcross(const CopyStep<bytesPerPixel>& step, BYTE* target, int count, const TexelWalk& walk) {
    CopyAcross(step, target, count, walk);
}
template <class Step>
void DrawAcross(const Step& step, BYTE* target, int count, const TexelWalk& walk) {
    step.CombineAcross(target, count, walk);
}

// Draws the spans of one triangle, which come row by row, when there are enough of them, or at the end by Finish.
template <class Step>
class SpanTiles {
public:
    using RowSpan = Span<std::int32_t>;

    SpanTiles(const PixelLock& target, const Step& step)
        : bits_(target.At(0, 0)), pitch_(target.Pitch()), step_(step) {}

    void Draw(const RowSpan& span) {
        if (held_ > 0 && spans_[held_ - 1].y + 1 != span.y) {
            Finish();
        }
        spans_[held_++] = span;
        if (held_ == kernels::tileRows) {
            DrawTileOfHeld();
        }
    }

    void Finish() {
        for (int i = 0; i < held_; ++i) {
            DrawPart(spans_[i], spans_[i].x, spans_[i].last + 1);
        }
        held_ = 0;
    }

private:
    static constexpr int leastColumns = 4 * kernels::tileColumns;   // fewer aren't worth the rows' set-up

    BYTE* PixelAt(int y, int x) const { return bits_ + y * pitch_ + static_cast<std::ptrdiff_t>(x) * Step::pixelBytes; }
    void DrawPart(const RowSpan& span, int first, int end) const {
        if (first < end) {
            DrawAcross(step_, PixelAt(span.y, first), end - first, WalkAlong(span).After(first - span.x));
        }
    }

    // The columns that all of them have are a tile; what sticks out is drawn by itself.
    void DrawTileOfHeld() {
        int first = spans_[0].x, end = spans_[0].last + 1;
        for (const RowSpan& span : spans_) {
            first = std::max(first, span.x);
            end = std::min(end, span.last + 1);
        }
        const int count = (end - first) / kernels::tileColumns * kernels::tileColumns;
        if (count < leastColumns) {
            Finish();
            return;
        }
        kernels::TexelLine lines[kernels::tileRows];
        for (int i = 0; i < kernels::tileRows; ++i) {
            lines[i] = WalkAlong(spans_[i]).After(first - spans_[i].x);
            DrawPart(spans_[i], spans_[i].x, first);
            DrawPart(spans_[i], first + count, spans_[i].last + 1);
        }
        step_.DrawTile(PixelAt(spans_[0].y, first), static_cast<int>(pitch_), count, lines);
        held_ = 0;
    }

    BYTE* const bits_;
    const std::ptrdiff_t pitch_;
    const Step step_;
    RowSpan spans_[kernels::tileRows];
    int held_ = 0;
};

}   // namespace

bool CrowdsTheCache(const FACE3D& face, std::ptrdiff_t texturePitch, int texelBytes) {
    constexpr int lineBytes = 64, cacheSets = 64, cacheWays = 8;   // as most processors have them, or more
    const FACE3D::Vertex &a = face.vertices[0], &b = face.vertices[1], &c = face.vertices[2];
    const std::int64_t width = std::max({a.x, b.x, c.x}) - std::min({a.x, b.x, c.x});
    const std::ptrdiff_t powerOfTwo = texturePitch & -texturePitch;
    if (width < lineBytes || powerOfTwo <= lineBytes) {
        return false;
    }
    // How far the longest span goes along an axis of the texture, by the plane through the face's corners.
    const std::int64_t bx = std::int64_t{b.x} - a.x, by = std::int64_t{b.y} - a.y;
    const std::int64_t cx = std::int64_t{c.x} - a.x, cy = std::int64_t{c.y} - a.y;
    const std::int64_t area = std::abs(bx * cy - cx * by);
    const auto way = [=](int atA, int atB, int atC) {
        const std::int64_t perArea = std::abs((atB - atA) * cy - (atC - atA) * by);
        return std::min<std::int64_t>(area == 0 ? 0 : perArea * width / area,
                                      std::max({atA, atB, atC}) - std::min({atA, atB, atC}));
    };
    const std::int64_t setsOfColumn = std::max<std::int64_t>(lineBytes * cacheSets / powerOfTwo, 1);
    const std::int64_t sets = setsOfColumn * (1 + way(a.u, b.u, c.u) * texelBytes / lineBytes);
    return sets < cacheSets && way(a.v, b.v, c.v) > sets * cacheWays;
}

template <class Step>
void DrawInTiles(const PixelLock& target, const FACE3D& face, const CRect& clip, const Step& step) {
    SpanTiles<Step> tiles(target, step);
    const auto draw = [&tiles](const Span<std::int32_t>& span) { tiles.Draw(span); };
    TriangleWalk<std::int32_t, decltype(draw)>(face, clip, draw).Run();
    tiles.Finish();
}

template void DrawInTiles(const PixelLock&, const FACE3D&, const CRect&, const CopyStep<4>&);
template void DrawInTiles(const PixelLock&, const FACE3D&, const CRect&, const CopyStep<1>&);
template void DrawInTiles(const PixelLock&, const FACE3D&, const CRect&, const KeyStep&);
template void DrawInTiles(const PixelLock&, const FACE3D&, const CRect&, const BlendStep&);

}   // namespace rastel::raster

// The walk over a triangle's rows: which pixels a face covers and which texel each of them shows. What a pixel becomes
// is the caller's.
//
// Fixed point with 16 bits of fraction. All slopes are cut off toward zero, and each row has steps of its own, so that
// every number here is part of the result: the walk is a definition, not an approximation.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "rastel/platform/framework.h"
#include "rastel/raster/face3d.h"

namespace rastel::raster {

// Sums and products that wrap. Within a face's limits nothing that is looked at does; the step behind an edge's last
// row or a span's last pixel may.
template <class Number>
constexpr Number WrappedSum(Number a, Number b) {
    using Bits = std::make_unsigned_t<Number>;
    return static_cast<Number>(static_cast<Bits>(a) + static_cast<Bits>(b));
}

template <class Number>
constexpr Number WrappedProduct(Number a, Number b) {
    using Bits = std::make_unsigned_t<Number>;
    return static_cast<Number>(static_cast<Bits>(a) * static_cast<Bits>(b));
}

// The pixels x to last of row y, at least one. (u, v) is the texel of the first, rounding included: its whole parts are
// the column and row in the source. A span of one pixel has steps of no meaning.
template <class Number>
struct Span {
    int y, x, last;
    Number u, v;
    Number stepU, stepV;
};

// Number is a signed integer: 32 bits for faces within the limits, 64 bits for any face. drawSpan takes Span<Number>.
template <class Number, class DrawSpan>
class TriangleWalk {
public:
    TriangleWalk(const FACE3D& face, const CRect& clip, DrawSpan drawSpan)
        : clip_(clip), drawSpan_(std::move(drawSpan)) {
        const auto& vertices = face.vertices;
        mayLeaveClip_ = std::any_of(std::begin(vertices), std::end(vertices), [&](const FACE3D::Vertex& vertex) {
            return vertex.x < clip.left || vertex.x >= clip.right;
        });
        Sort(vertices);
    }

    // The triangle has a height: its three y are not all equal. Of vertices on one row the leftmost comes first.
    void Run() {
        const int first = std::max(top_->y, static_cast<int>(clip_.top));
        const int last = std::min(bottom_->y, static_cast<int>(clip_.bottom) - 1);
        if (first > last) {
            return;
        }
        if (top_->y == middle_->y) {
            if (middle_->x < top_->x) {
                std::swap(top_, middle_);
            }
            DrawRows(first, last, EdgeAt(*top_, *bottom_, first), EdgeAt(*middle_, *bottom_, first));
        } else if (middle_->y == bottom_->y) {
            if (bottom_->x < middle_->x) {
                std::swap(middle_, bottom_);
            }
            DrawRows(first, last, EdgeAt(*top_, *middle_, first), EdgeAt(*top_, *bottom_, first));
        } else {
            DrawGeneral(first, last);
        }
    }

private:
    struct Edge {
        Number x, u, v;
        Number stepX, stepU, stepV;

        void NextRow() {
            x = WrappedSum(x, stepX);
            u = WrappedSum(u, stepU);
            v = WrappedSum(v, stepV);
        }
    };

    static constexpr Number Fixed(int value) { return static_cast<Number>(value) * 65536; }

    // The comparisons are strict, and their order says which of two vertices on one row stands where.
    void Sort(const FACE3D::Vertex (&vertices)[3]) {
        top_ = &vertices[0];
        middle_ = &vertices[1];
        bottom_ = &vertices[2];
        if (middle_->y < top_->y) {
            std::swap(top_, middle_);
        }
        if (bottom_->y < top_->y) {
            std::swap(top_, bottom_);
        }
        if (bottom_->y < middle_->y) {
            std::swap(middle_, bottom_);
        }
    }

    // The edge from a vertex down to a lower one, at a row between them.
    static Edge EdgeAt(const FACE3D::Vertex& from, const FACE3D::Vertex& to, int row) {
        const Number height = static_cast<Number>(to.y) - from.y;
        const Number down = static_cast<Number>(row) - from.y;
        const auto slope = [height](int a, int b) { return (static_cast<Number>(b) - a) * 65536 / height; };
        Edge edge;
        edge.stepX = slope(from.x, to.x);
        edge.stepU = slope(from.u, to.u);
        edge.stepV = slope(from.v, to.v);
        edge.x = Fixed(from.x) + edge.stepX * down;
        edge.u = Fixed(from.u) + edge.stepU * down;
        edge.v = Fixed(from.v) + edge.stepV * down;
        return edge;
    }

    // The long edge runs from top to bottom; on the other side one edge follows the other at the middle vertex. The
    // side is settled once, by the slopes of the first row drawn, so a rounded row on the other side stays empty.
    void DrawGeneral(int first, int last) {
        const Edge longEdge = EdgeAt(*top_, *bottom_, first);
        if (middle_->y < clip_.top) {
            const Edge shortEdge = EdgeAt(*middle_, *bottom_, first);
            if (longEdge.stepX <= shortEdge.stepX) {
                DrawRows(first, last, shortEdge, longEdge);
            } else {
                DrawRows(first, last, longEdge, shortEdge);
            }
            return;
        }
        const Edge shortEdge = EdgeAt(*top_, *middle_, first);
        const bool shortIsLeft = longEdge.stepX >= shortEdge.stepX;
        const int bend = std::min(middle_->y, last);   // the middle vertex's own row still belongs to the upper edge
        const Edge reached = shortIsLeft ? DrawRows(first, bend, shortEdge, longEdge).second
                                         : DrawRows(first, bend, longEdge, shortEdge).first;
        if (bend == last) {
            return;
        }
        const Edge lowerEdge = EdgeAt(*middle_, *bottom_, bend + 1);
        if (shortIsLeft) {
            DrawRows(bend + 1, last, lowerEdge, reached);
        } else {
            DrawRows(bend + 1, last, reached, lowerEdge);
        }
    }

    // Gives back both edges, one row below the last.
    std::pair<Edge, Edge> DrawRows(int first, int last, const Edge& left, const Edge& right) {
        return mayLeaveClip_ ? DrawRowsClipped<true>(first, last, left, right)
                             : DrawRowsClipped<false>(first, last, left, right);
    }

    template <bool isClipped>
    std::pair<Edge, Edge> DrawRowsClipped(int first, int last, Edge left, Edge right) {
        constexpr Number half = 0x8000;
        for (int y = first; y <= last; ++y, left.NextRow(), right.NextRow()) {
            Number start = (left.x + half) >> 16, end = (right.x + half) >> 16;
            const Number width = end - start;
            if (width < 0 || (isClipped && (end < clip_.left || start >= clip_.right))) {
                continue;   // the edges have crossed by rounding, or nothing is left
            }
            Span<Number> span = {y, 0, 0, left.u + half, left.v + half, 0, 0};
            if (width > 0) {
                span.stepU = (right.u - left.u) / width;
                span.stepV = (right.v - left.v) / width;
            }
            if (isClipped) {
                if (start < clip_.left) {
                    const Number cut = clip_.left - start;   // at most the width
                    span.u += span.stepU * cut;
                    span.v += span.stepV * cut;
                    start = clip_.left;
                }
                end = std::min(end, static_cast<Number>(clip_.right) - 1);
            }
            span.x = static_cast<int>(start);
            span.last = static_cast<int>(end);
            drawSpan_(span);
        }
        return {left, right};
    }

    const FACE3D::Vertex *top_, *middle_, *bottom_;
    const CRect clip_;
    bool mayLeaveClip_;
    DrawSpan drawSpan_;
};

}   // namespace rastel::raster

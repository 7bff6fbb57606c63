#include "rastel/platform/portable/d3d9/rasterizer.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace rastel::platform::d3d {

namespace {

constexpr int mostCorners = 10;   // three, and one more for each side that cuts
constexpr std::int64_t subpixels = 256;

struct Polygon {
    ClipVertex corners[mostCorners];
    int count = 0;
};

bool IsFinite(const ClipVertex& v) {
    const auto isFinite = [](auto number) { return std::isfinite(number); };
    return isFinite(v.x) && isFinite(v.y) && isFinite(v.z) && isFinite(v.w) && std::ranges::all_of(v.color, isFinite);
}

ClipVertex Between(const ClipVertex& from, const ClipVertex& to, double share) {
    const auto mix = [&](auto first, auto second) {
        return static_cast<decltype(first)>(first + (second - first) * share);
    };
    ClipVertex made{mix(from.x, to.x), mix(from.y, to.y), mix(from.z, to.z), mix(from.w, to.w), {},
                    mix(from.u, to.u), mix(from.v, to.v)};
    for (std::size_t i = 0; i < 4; ++i) {
        made.color[i] = mix(from.color[i], to.color[i]);
    }
    return made;
}

// Keeps what lies on the side where `distance` isn't negative.
template <class Distance>
void Cut(Polygon& polygon, Distance distance) {
    const Polygon old = polygon;
    polygon.count = 0;
    for (int i = 0; i < old.count; ++i) {
        const ClipVertex& here = old.corners[i];
        const ClipVertex& next = old.corners[(i + 1) % old.count];
        const double mine = distance(here), its = distance(next);
        if (mine >= 0 && polygon.count < mostCorners) {
            polygon.corners[polygon.count++] = here;
        }
        if ((mine >= 0) != (its >= 0) && polygon.count < mostCorners) {
            // From the inside out, whichever way round: neighbours cut the edge that they share in the same place.
            polygon.corners[polygon.count++] =
                mine >= 0 ? Between(here, next, mine / (mine - its)) : Between(next, here, its / (its - mine));
        }
    }
}

// On the target. Attributes are divided by w, so that they are even across the screen.
struct ScreenVertex {
    std::int64_t x, y;   // in parts of a pixel
    double z, inverseW;
    double values[6];   // red, green, blue, alpha, u, v, each times inverseW
};

ScreenVertex Projected(const ClipVertex& v, const D3DVIEWPORT9& viewport) {
    const double inverse = 1 / v.w;
    // The cuts have done this, but for what is lost between numbers of very different size, and for what isn't one.
    const auto inside = [inverse](double value, double least) {
        const double ratio = value * inverse;
        return ratio > least ? std::min(ratio, 1.0) : least;
    };
    const double x = viewport.X + (1 + inside(v.x, -1)) * viewport.Width / 2;
    const double y = viewport.Y + (1 - inside(v.y, -1)) * viewport.Height / 2;
    ScreenVertex made{std::llround(x * subpixels),
                      std::llround(y * subpixels),
                      viewport.MinZ + inside(v.z, 0) * (double{viewport.MaxZ} - viewport.MinZ),
                      inverse,
                      {}};
    for (std::size_t i = 0; i < 4; ++i) {
        made.values[i] = v.color[i] * inverse;
    }
    made.values[4] = v.u * inverse;
    made.values[5] = v.v * inverse;
    return made;
}

// Which side of the line from a to b: positive to its right on the screen, whose rows run down.
struct Edge {
    Edge(const ScreenVertex& a, const ScreenVertex& b) : dx(b.x - a.x), dy(b.y - a.y), x(a.x), y(a.y) {
        // A pixel on the line belongs to the triangle below it or to its right.
        bias = dy < 0 || (dy == 0 && dx > 0) ? 0 : -1;
    }
    std::int64_t At(std::int64_t px, std::int64_t py) const { return dx * (py - y) - dy * (px - x); }

    std::int64_t dx, dy, x, y, bias;
};

template <class Number>
bool Passes(DWORD function, Number value, Number reference) {
    switch (function) {
        case D3DCMP_NEVER:
            return false;
        case D3DCMP_LESS:
            return value < reference;
        case D3DCMP_EQUAL:
            return value == reference;
        case D3DCMP_LESSEQUAL:
            return value <= reference;
        case D3DCMP_GREATER:
            return value > reference;
        case D3DCMP_NOTEQUAL:
            return value != reference;
        case D3DCMP_GREATEREQUAL:
            return value >= reference;
        default:
            return true;
    }
}

float BlendFactor(DWORD blend, const Color4& source, const Color4& target, std::size_t channel) {
    switch (blend) {
        case D3DBLEND_ZERO:
            return 0;
        case D3DBLEND_SRCCOLOR:
            return source[channel];
        case D3DBLEND_INVSRCCOLOR:
            return 1 - source[channel];
        case D3DBLEND_SRCALPHA:
            return source[3];
        case D3DBLEND_INVSRCALPHA:
            return 1 - source[3];
        case D3DBLEND_DESTALPHA:
            return target[3];
        case D3DBLEND_INVDESTALPHA:
            return 1 - target[3];
        case D3DBLEND_DESTCOLOR:
            return target[channel];
        case D3DBLEND_INVDESTCOLOR:
            return 1 - target[channel];
        default:
            return 1;
    }
}

float Combined(DWORD operation, float first, float second) {
    switch (operation) {
        case D3DTOP_SELECTARG1:
            return first;
        case D3DTOP_SELECTARG2:
            return second;
        case D3DTOP_ADD:
            return first + second;
        default:
            return first * second;
    }
}

// What the texture stage makes of a pixel's own colour.
Color4 Shaded(const DrawState& state, const Color4& diffuse, const Color4* texel) {
    const StageState& stage = state.stage;
    if (!texel || stage.colorOp == D3DTOP_DISABLE) {
        return diffuse;
    }
    const auto argument = [&](DWORD which) -> const Color4& {
        return which == D3DTA_TEXTURE ? *texel : which == D3DTA_TFACTOR ? state.factor : diffuse;
    };
    Color4 color;
    for (std::size_t i = 0; i < 3; ++i) {
        color[i] = Combined(stage.colorOp, argument(stage.colorFirst)[i], argument(stage.colorSecond)[i]);
    }
    color[3] = stage.alphaOp == D3DTOP_DISABLE
                   ? diffuse[3]
                   : Combined(stage.alphaOp, argument(stage.alphaFirst)[3], argument(stage.alphaSecond)[3]);
    return color;
}

class TriangleFill {
public:
    TriangleFill(const DrawState& state, const ScreenVertex& a, const ScreenVertex& b, const ScreenVertex& c,
                 std::int64_t area)
        : state_(state),
          corners_{&a, &b, &c},
          edges_{{b, c}, {c, a}, {a, b}},
          inverseArea_(1.0 / static_cast<double>(area)) {
        if (state.texture) {
            const double texels = TexelArea(), pixels = static_cast<double>(area) / (subpixels * subpixels);
            sampler_.emplace(*state.texture, state.sampler, texels > 0 ? pixels / texels : 1);
        }
    }

    void Draw() {
        const auto [left, right] = std::minmax({corners_[0]->x, corners_[1]->x, corners_[2]->x});
        const auto [top, bottom] = std::minmax({corners_[0]->y, corners_[1]->y, corners_[2]->y});
        const auto first = [](std::int64_t low, LONG limit) {
            return static_cast<int>(std::max<std::int64_t>((low + subpixels - 1) / subpixels, limit));
        };
        const auto last = [](std::int64_t high, LONG limit) {
            return static_cast<int>(std::min<std::int64_t>(high / subpixels + 1, limit));
        };
        const int fromX = first(left, state_.limit.left), toX = last(right, state_.limit.right);
        const int fromY = first(top, state_.limit.top), toY = last(bottom, state_.limit.bottom);
        for (int y = fromY; y < toY; ++y) {
            DrawRow(y, fromX, toX);
        }
    }

private:
    double TexelArea() const {
        const Image& image = *state_.texture->images.front();
        const auto place = [&](int i, int axis) {
            return corners_[i]->values[4 + axis] / corners_[i]->inverseW * (axis == 0 ? image.Width() : image.Height());
        };
        return std::abs((place(1, 0) - place(0, 0)) * (place(2, 1) - place(0, 1)) -
                        (place(2, 0) - place(0, 0)) * (place(1, 1) - place(0, 1)));
    }

    void DrawRow(int y, int fromX, int toX) {
        std::int64_t sides[3];
        for (int i = 0; i < 3; ++i) {
            sides[i] = edges_[i].At(fromX * subpixels, y * subpixels) + edges_[i].bias;
        }
        for (int x = fromX; x < toX; ++x) {
            if ((sides[0] | sides[1] | sides[2]) >= 0) {
                const double shares[3] = {static_cast<double>(sides[0] - edges_[0].bias) * inverseArea_,
                                          static_cast<double>(sides[1] - edges_[1].bias) * inverseArea_,
                                          static_cast<double>(sides[2] - edges_[2].bias) * inverseArea_};
                DrawPixel(x, y, shares);
            }
            for (int i = 0; i < 3; ++i) {
                sides[i] -= edges_[i].dy * subpixels;
            }
        }
    }

    void DrawPixel(int x, int y, const double* shares) {
        const auto mixed = [&](auto value) {
            return shares[0] * value(*corners_[0]) + shares[1] * value(*corners_[1]) + shares[2] * value(*corners_[2]);
        };
        float* const depth = state_.depth
                                 ? &state_.depth->depths[static_cast<std::size_t>(y) * state_.depth->description.Width +
                                                         static_cast<std::size_t>(x)]
                                 : nullptr;
        const auto z = static_cast<float>(mixed([](const ScreenVertex& v) { return v.z; }));
        if (depth && state_.testsDepth && !Passes(state_.depthFunction, z, *depth)) {
            return;
        }
        const double w = 1 / mixed([](const ScreenVertex& v) { return v.inverseW; });
        const auto value = [&](std::size_t i) {
            return static_cast<float>(mixed([i](const ScreenVertex& v) { return v.values[i]; }) * w);
        };
        const Color4 diffuse{value(0), value(1), value(2), value(3)};
        Color4 texel;
        if (sampler_) {
            texel = sampler_->At(value(4), value(5));
        }
        Color4 color = Shaded(state_, diffuse, sampler_ ? &texel : nullptr);
        if (state_.testsAlpha && !Passes(state_.alphaFunction, ToArgb(color) >> 24, state_.alphaReference)) {
            return;
        }
        const D3DFORMAT format = state_.target->description.Format;
        BYTE* const pixel = state_.target->Row(y) + static_cast<std::ptrdiff_t>(x) * state_.target->BytesPerPixel();
        if (state_.blends) {
            const Color4 under = ToColor4(LoadColor(format, pixel)), over = color;
            for (std::size_t i = 0; i < 4; ++i) {
                color[i] = over[i] * BlendFactor(state_.sourceBlend, over, under, i) +
                           under[i] * BlendFactor(state_.targetBlend, over, under, i);
            }
        }
        StoreColor(format, pixel, ToArgb(color));
        if (depth && state_.testsDepth && state_.writesDepth) {
            *depth = z;
        }
    }

    const DrawState& state_;
    const ScreenVertex* corners_[3];
    Edge edges_[3];
    double inverseArea_;
    std::optional<TextureSampler> sampler_;
};

}   // namespace

void DrawTriangle(const DrawState& state, const ClipVertex& first, const ClipVertex& second, const ClipVertex& third) {
    if (!IsFinite(first) || !IsFinite(second) || !IsFinite(third)) {
        return;
    }
    Polygon polygon;
    polygon.count = 3;
    polygon.corners[0] = first;
    polygon.corners[1] = second;
    polygon.corners[2] = third;
    if (state.isFlat) {
        polygon.corners[1].color = polygon.corners[2].color = first.color;
    }
    constexpr double nearest = 1e-9;   // behind the eye there is nothing to divide by
    Cut(polygon, [](const ClipVertex& v) { return v.w - nearest; });
    Cut(polygon, [](const ClipVertex& v) { return v.z; });
    Cut(polygon, [](const ClipVertex& v) { return v.w - v.z; });
    Cut(polygon, [](const ClipVertex& v) { return v.w + v.x; });
    Cut(polygon, [](const ClipVertex& v) { return v.w - v.x; });
    Cut(polygon, [](const ClipVertex& v) { return v.w + v.y; });
    Cut(polygon, [](const ClipVertex& v) { return v.w - v.y; });
    ScreenVertex corners[mostCorners];
    for (int i = 0; i < polygon.count; ++i) {
        if (!(polygon.corners[i].w >= nearest / 2)) {
            return;   // lost in the cuts
        }
        corners[i] = Projected(polygon.corners[i], state.viewport);
    }
    for (int i = 2; i < polygon.count; ++i) {
        const ScreenVertex* a = &corners[0];
        const ScreenVertex* b = &corners[i - 1];
        const ScreenVertex* c = &corners[i];
        std::int64_t area = Edge(*a, *b).At(c->x, c->y);   // positive: clockwise on the screen
        if (area == 0 || (state.cull == D3DCULL_CW && area > 0) || (state.cull == D3DCULL_CCW && area < 0)) {
            continue;
        }
        if (area < 0) {
            std::swap(b, c);
            area = -area;
        }
        TriangleFill(state, *a, *b, *c, area).Draw();
    }
}

}   // namespace rastel::platform::d3d

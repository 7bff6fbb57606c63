#include "rastel/platform/portable/d3d9/texture_sampler.h"

#include <algorithm>
#include <cmath>

namespace rastel::platform::d3d {

namespace {

const Image& ChosenLevel(const Levels& levels, const SamplerState& state, double pixelsPerTexel) {
    if (state.chooses == D3DTEXF_NONE || !(pixelsPerTexel > 0) || pixelsPerTexel >= 1) {
        return *levels.images.front();
    }
    const double level = std::round(-std::log2(pixelsPerTexel) / 2);
    return *levels.images[static_cast<std::size_t>(
        std::clamp(level, 0.0, static_cast<double>(levels.images.size() - 1)))];
}

// Without a call for the numbers that occur.
double Floor(double place) {
    constexpr double surelyInt = 1e9;
    if (std::abs(place) < surelyInt) {
        const auto whole = static_cast<int>(place);
        return whole - (place < whole);
    }
    return std::floor(place);
}

// A texel's number inside the image, by the rule for those outside.
int Addressed(double place, int size, DWORD rule) {
    if (place >= 0 && place < size) {
        return static_cast<int>(place);
    }
    if (rule == D3DTADDRESS_CLAMP) {
        return static_cast<int>(std::clamp(place, 0.0, size - 1.0));
    }
    const double period = rule == D3DTADDRESS_MIRROR ? 2.0 * size : size;
    double inside = place - Floor(place / period) * period;
    inside = inside >= size ? period - 1 - inside : inside;
    return static_cast<int>(std::clamp(inside, 0.0, size - 1.0));
}

}   // namespace

Color4 ToColor4(DWORD argb) {
    static const std::array<float, 256> parts = [] {
        std::array<float, 256> made;
        for (std::size_t i = 0; i < made.size(); ++i) {
            made[i] = static_cast<float>(i) / 255;
        }
        return made;
    }();
    return {parts[argb >> 16 & 0xFF], parts[argb >> 8 & 0xFF], parts[argb & 0xFF], parts[argb >> 24]};
}

DWORD ToArgb(const Color4& color) {
    // What is no number becomes 0.
    const auto byte = [](float value) {
        return static_cast<DWORD>((value > 0 ? std::min(value, 1.0f) : 0.0f) * 255 + 0.5f);
    };
    return byte(color[3]) << 24 | byte(color[0]) << 16 | byte(color[1]) << 8 | byte(color[2]);
}

TextureSampler::TextureSampler(const Levels& levels, const SamplerState& state, double pixelsPerTexel)
    : image_(ChosenLevel(levels, state, pixelsPerTexel)),
      state_(state),
      isLinear_((pixelsPerTexel >= 1 ? state.magnifies : state.minifies) >= D3DTEXF_LINEAR) {}

Color4 TextureSampler::Texel(int x, int y) const {
    return ToColor4(
        LoadColor(image_.description.Format, image_.Row(y) + static_cast<std::ptrdiff_t>(x) * image_.BytesPerPixel()));
}

Color4 TextureSampler::At(float u, float v) const {
    const int width = image_.Width(), height = image_.Height();
    double x = double{u} * width, y = double{v} * height;
    if (!std::isfinite(x) || !std::isfinite(y)) {
        return {};
    }
    if (!isLinear_) {
        return Texel(Addressed(Floor(x), width, state_.addressU), Addressed(Floor(y), height, state_.addressV));
    }
    x -= 0.5;
    y -= 0.5;
    const double left = Floor(x), top = Floor(y);
    const int x0 = Addressed(left, width, state_.addressU), x1 = Addressed(left + 1, width, state_.addressU);
    const int y0 = Addressed(top, height, state_.addressV), y1 = Addressed(top + 1, height, state_.addressV);
    const auto right = static_cast<float>(x - left), below = static_cast<float>(y - top);
    const Color4 a = Texel(x0, y0), b = Texel(x1, y0), c = Texel(x0, y1), d = Texel(x1, y1);
    Color4 mixed;
    for (std::size_t i = 0; i < 4; ++i) {
        const float upper = a[i] + (b[i] - a[i]) * right, lower = c[i] + (d[i] - c[i]) * right;
        mixed[i] = upper + (lower - upper) * below;
    }
    return mixed;
}

}   // namespace rastel::platform::d3d

#include "rastel/platform/portable/d3d9/texture_sampler.h"

#include <algorithm>
#include <cmath>

namespace rastel::platform::d3d {

namespace {

const Image& ChosenLevel(const Levels& levels, const SamplerState& state, double pixelsPerTexel) {
    if (state.chooses == D3DTEXF_NONE || !(pixelsPerTexel > 0) || pixelsPerTexel >= 1) {
        return *levels.front();
    }
    const double level = std::round(-std::log2(pixelsPerTexel) / 2);
    return *levels[static_cast<std::size_t>(std::clamp(level, 0.0, static_cast<double>(levels.size() - 1)))];
}

// A texel's number inside the image, by the rule for those outside.
int Addressed(double place, int size, DWORD rule) {
    if (rule == D3DTADDRESS_CLAMP) {
        return static_cast<int>(std::clamp(place, 0.0, size - 1.0));
    }
    const double period = rule == D3DTADDRESS_MIRROR ? 2.0 * size : size;
    double inside = place - std::floor(place / period) * period;
    inside = inside >= size ? period - 1 - inside : inside;
    return static_cast<int>(std::clamp(inside, 0.0, size - 1.0));
}

}   // namespace

Color4 ToColor4(DWORD argb) {
    const auto channel = [&](int shift) { return static_cast<float>((argb >> shift) & 0xFF) / 255; };
    return {channel(16), channel(8), channel(0), channel(24)};
}

DWORD ToArgb(const Color4& color) {
    const auto byte = [](float value) { return static_cast<DWORD>(std::clamp(value, 0.0f, 1.0f) * 255 + 0.5f); };
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
        return Texel(Addressed(std::floor(x), width, state_.addressU),
                     Addressed(std::floor(y), height, state_.addressV));
    }
    x -= 0.5;
    y -= 0.5;
    const double left = std::floor(x), top = std::floor(y);
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

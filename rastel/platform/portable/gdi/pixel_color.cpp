#include "rastel/platform/portable/gdi/pixel_color.h"

#include <array>
#include <bit>

#include "rastel/platform/portable/gdi.h"

namespace rastel::platform {

namespace {

constexpr BYTE kFixed[20][3] = {{0, 0, 0},       {128, 0, 0},     {0, 128, 0},     {128, 128, 0},   {0, 0, 128},
                                {128, 0, 128},   {0, 128, 128},   {192, 192, 192}, {192, 220, 192}, {166, 202, 240},
                                {255, 251, 240}, {160, 160, 164}, {128, 128, 128}, {255, 0, 0},     {0, 255, 0},
                                {255, 255, 0},   {0, 0, 255},     {255, 0, 255},   {0, 255, 255},   {255, 255, 255}};

constexpr RGBQUAD Quad(const BYTE (&color)[3]) {
    return {color[2], color[1], color[0], 0};
}

constexpr std::array<RGBQUAD, 256> MakeUsual256() {
    std::array<RGBQUAD, 256> colors{};
    for (std::size_t i = 0; i < 10; ++i) {
        colors[i] = Quad(kFixed[i]);
        colors[246 + i] = Quad(kFixed[10 + i]);
    }
    for (std::size_t i = 0; i < 216; ++i) {   // 6 x 6 x 6
        colors[10 + i] = {static_cast<BYTE>(i % 6 * 51), static_cast<BYTE>(i / 6 % 6 * 51),
                          static_cast<BYTE>(i / 36 * 51), 0};
    }
    for (std::size_t i = 0; i < 20; ++i) {   // and greys between its own
        const BYTE grey = static_cast<BYTE>(6 + 12 * i);
        colors[226 + i] = {grey, grey, grey, 0};
    }
    return colors;
}

constexpr std::array<RGBQUAD, 16> MakeUsual16() {
    // Where each of the 16 stands among the fixed colours: the dark ones, greys, the bright ones.
    constexpr std::size_t kPlaces[16] = {0, 1, 2, 3, 4, 5, 6, 12, 7, 13, 14, 15, 16, 17, 18, 19};
    std::array<RGBQUAD, 16> colors{};
    for (std::size_t i = 0; i < 16; ++i) {
        colors[i] = Quad(kFixed[kPlaces[i]]);
    }
    return colors;
}

constexpr std::array<RGBQUAD, 256> kUsual256 = MakeUsual256();
constexpr std::array<RGBQUAD, 16> kUsual16 = MakeUsual16();
constexpr std::array<RGBQUAD, 2> kUsual2 = {RGBQUAD{0, 0, 0, 0}, RGBQUAD{255, 255, 255, 0}};

}   // namespace

Channel::Channel(DWORD mask) {
    if (mask == 0) {
        return;
    }
    shift = std::countr_zero(mask);
    bits = std::countr_one(mask >> shift);
    if (bits > 8) {
        shift += bits - 8;
        bits = 8;
    }
    int width = bits;
    repeat = 1;
    while (width < 8) {
        repeat = (repeat << bits) | 1;
        width += bits;
    }
    drop = width - 8;
}

COLORREF ColorOfPixel(const PixelBuffer& buffer, DWORD raw) {
    const PixelFormat& format = buffer.format;
    if (format.IsIndexed()) {
        const bool known = buffer.colors != nullptr && raw < static_cast<DWORD>(buffer.colorCount);
        return known ? ColorOf(buffer.colors[raw]) : 0;
    }
    return RGB(Channel(format.redMask).Widen(raw), Channel(format.greenMask).Widen(raw),
               Channel(format.blueMask).Widen(raw));
}

DWORD PixelOfColor(const PixelBuffer& buffer, COLORREF color) {
    const PixelFormat& format = buffer.format;
    if (format.IsIndexed()) {
        return static_cast<DWORD>(NearestColor(buffer.colors, buffer.colorCount, color));
    }
    return Channel(format.redMask).Narrow(GetRValue(color)) | Channel(format.greenMask).Narrow(GetGValue(color)) |
           Channel(format.blueMask).Narrow(GetBValue(color));
}

int NearestColor(const RGBQUAD* colors, int count, COLORREF color) {
    const int red = GetRValue(color);
    const int green = GetGValue(color);
    const int blue = GetBValue(color);
    int best = 0;
    int bestDistance = INT32_MAX;
    for (int i = 0; colors != nullptr && i < count; ++i) {
        const int dr = colors[i].rgbRed - red;
        const int dg = colors[i].rgbGreen - green;
        const int db = colors[i].rgbBlue - blue;
        const int distance = dr * dr + dg * dg + db * db;
        if (distance < bestDistance) {
            best = i;
            bestDistance = distance;
            if (distance == 0) {
                break;
            }
        }
    }
    return best;
}

DWORD WhitePixel(const PixelFormat& format) {
    if (format.IsIndexed()) {
        return (1u << format.bitsPerPixel) - 1;
    }
    return format.redMask | format.greenMask | format.blueMask;
}

const RGBQUAD* UsualColors(int bitsPerPixel) {
    return bitsPerPixel == 1 ? kUsual2.data() : bitsPerPixel == 4 ? kUsual16.data() : kUsual256.data();
}

}   // namespace rastel::platform

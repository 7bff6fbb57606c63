#include "examples/support/picture.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace rastel::example {

namespace {

DWORD Mix(DWORD first, DWORD second, double share) {
    DWORD mixed = 0xFF000000u;
    for (const int shift : {0, 8, 16}) {
        const double from = (first >> shift) & 0xFF;
        const double to = (second >> shift) & 0xFF;
        mixed |= static_cast<DWORD>(std::clamp(from + (to - from) * share, 0.0, 255.0)) << shift;
    }
    return mixed;
}

struct Mood {
    DWORD skyTop, skyBottom, sun, hills;
};

constexpr Mood moods[] = {
    {0x23395B, 0xF2A65A, 0xFFF1C9, 0x1F2D3D},
    {0x3A86C8, 0xCFE8F7, 0xFFFFFF, 0x2E6B46},
    {0x1B1436, 0x9B4F96, 0xFFD1DC, 0x120D24},
    {0x5B8E7D, 0xF4E285, 0xFFFBE6, 0x2D4A40},
};

}   // namespace

std::optional<Picture> MakePicture(long long width, long long height) {
    constexpr long long mostSide = 16384;
    constexpr long long mostPixels = 64'000'000;
    if (width < 1 || height < 1 || width > mostSide || height > mostSide || width * height > mostPixels) {
        return std::nullopt;
    }
    Picture picture;
    picture.width = static_cast<int>(width);
    picture.height = static_cast<int>(height);
    try {
        picture.pixels.assign(static_cast<std::size_t>(width * height), 0xFF000000u);
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
    return picture;
}

std::vector<unsigned char> ChannelsOf(const Picture& picture) {
    std::vector<unsigned char> channels;
    channels.reserve(picture.pixels.size() * (picture.hasAlpha ? 4 : 3));
    for (const DWORD pixel : picture.pixels) {
        channels.push_back(static_cast<unsigned char>(pixel >> 16));
        channels.push_back(static_cast<unsigned char>(pixel >> 8));
        channels.push_back(static_cast<unsigned char>(pixel));
        if (picture.hasAlpha) {
            channels.push_back(static_cast<unsigned char>(pixel >> 24));
        }
    }
    return channels;
}

std::optional<Picture> GeneratePicture(int width, int height, int variant) {
    std::optional<Picture> picture = MakePicture(width, height);
    if (!picture) {
        return picture;
    }
    const Mood& mood = moods[static_cast<std::size_t>(std::abs(variant % 4))];
    const double sunX = width * (0.3 + 0.12 * (variant % 4));
    const double sunY = height * 0.36;
    const double sunRadius = std::min(width, height) * 0.1;
    for (int y = 0; y < height; ++y) {
        DWORD* const row = picture->Row(y);
        for (int x = 0; x < width; ++x) {
            const double glow = std::hypot(x - sunX, y - sunY) / sunRadius;
            DWORD pixel = Mix(mood.skyTop, mood.skyBottom, static_cast<double>(y) / height * 1.4);
            pixel = Mix(pixel, mood.sun, glow < 1 ? 1.0 : 0.6 / (glow * glow));
            for (int ridge = 0; ridge < 3; ++ridge) {
                const double phase = x * 6.28 / width * (1.3 + ridge) + variant + ridge * 2.1;
                const double top = height * (0.62 + 0.12 * ridge + 0.06 * std::sin(phase) + 0.02 * std::sin(phase * 3));
                if (y >= top) {
                    pixel = Mix(mood.skyBottom, mood.hills, 0.45 + 0.25 * ridge);
                }
            }
            row[x] = pixel;
        }
    }
    return picture;
}

}   // namespace rastel::example

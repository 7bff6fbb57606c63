// Loading an 8-bit image into a plane.
#include <array>
#include <cstdint>

#include "rastel/alpha/alpha_channel.h"
#include "rastel/image/image.h"
#include "rastel/surface/pixel_lock.h"

namespace {

// What each index of the image stands for: the green of its colour.
std::array<unsigned char, 256> GreenTable(winext::CImage& image) {
    std::array<unsigned char, 256> table;
    for (int i = 0; i < 256; ++i) {
        table[static_cast<std::size_t>(i)] = static_cast<unsigned char>(image.GetColor(i) >> 8);
    }
    return table;
}

bool IsGreyRamp(const std::array<unsigned char, 256>& table) {
    for (std::size_t i = 0; i < table.size(); ++i) {
        if (table[i] != i) {
            return false;
        }
    }
    return true;
}

}   // namespace

int CAlphaChannel::SetImage(winext::CImage& image) {
    if (image.GetBitsPrPixel() != 8) {
        return 0;
    }
    const unsigned char* const bits = image.GetBits();
    if (!bits) {
        return 0;
    }
    const int imagePitch = image.GetPitch();
    const int imageWidth = image.GetWidth();
    const int imageHeight = image.GetHeight();
    // 16.16 steps: a side below 32768 keeps them in 31 bits, and a side of at least 1 gives a first sample.
    constexpr int sideLimit = 32768;
    if (imageWidth < 1 || imageHeight < 1 || imageWidth >= sideLimit || imageHeight >= sideLimit) {
        return 0;
    }
    const rastel::PixelLock target(*this);
    if (!target || m_Width < 1 || m_Height < 1) {
        return 0;
    }

    const std::array<unsigned char, 256> table = GreenTable(image);
    const bool isGreyRamp = IsGreyRamp(table);
    const auto stepX = static_cast<std::uint32_t>((imageWidth << 16) / m_Width);
    const auto stepY = static_cast<std::uint32_t>((imageHeight << 16) / m_Height);
    std::uint64_t sourceY = 0;   // 16.16, like sourceX; wide, for a step adds up over any plane
    for (int y = 0; y < m_Height; ++y, sourceY += stepY) {
        const int row = static_cast<int>(sourceY >> 16);
        const int imageRow = image.IsTopDown() ? row : imageHeight - row - 1;
        const unsigned char* const source = bits + static_cast<std::ptrdiff_t>(imageRow) * imagePitch;
        unsigned char* const targetRow = target.At(0, y);
        std::uint64_t sourceX = 0;
        for (int x = 0; x < m_Width; ++x, sourceX += stepX) {
            const unsigned char value = source[sourceX >> 16];
            targetRow[x] = isGreyRamp ? value : table[value];
        }
    }
    return 1;
}

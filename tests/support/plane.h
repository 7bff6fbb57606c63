// A plane in memory whose bytes are easily set and seen, without row padding.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "rastel/alpha/dib_alpha_channel.h"
#include "rastel/surface/pixel_lock.h"

namespace rastel::test {

using Bytes = std::vector<unsigned char>;

inline Bytes BytesOf(CAlphaChannel& plane) {
    Bytes bytes(static_cast<std::size_t>(plane.GetWidth() * plane.GetHeight()));
    const PixelLock lock(plane);
    EXPECT_TRUE(lock);
    for (int y = 0; lock && y < plane.GetHeight(); ++y) {
        std::memcpy(bytes.data() + y * plane.GetWidth(), lock.At(0, y), static_cast<std::size_t>(plane.GetWidth()));
    }
    return bytes;
}

class Plane : public CDibAlphaChannel {
public:
    Plane(int width, int height) { EXPECT_EQ(Initialize(width, height), 1); }
    // Noise in which 0 and 255 are likely.
    Plane(int width, int height, unsigned seed) : Plane(width, height) {
        std::mt19937 random(seed);
        Bytes bytes(static_cast<std::size_t>(width * height));
        for (unsigned char& byte : bytes) {
            const auto word = random();
            byte = static_cast<unsigned char>(word % 3 == 0 ? 0 : word % 3 == 1 ? 255 : word >> 8);
        }
        Set(bytes);
    }
    void Set(const Bytes& bytes) {
        const PixelLock lock(*this);
        EXPECT_TRUE(lock);
        for (int y = 0; lock && y < m_Height; ++y) {
            std::memcpy(lock.At(0, y), bytes.data() + y * m_Width, static_cast<std::size_t>(m_Width));
        }
    }
    Bytes Get() { return BytesOf(*this); }
};

}   // namespace rastel::test

#include "tests/support/pixels.h"

#include <cstring>

#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/surface.h"

namespace rastel::test {

std::vector<DWORD> PixelsOf(CSurface& surface) {
    const int width = surface.GetWidth(), height = surface.GetHeight();
    std::vector<DWORD> pixels(static_cast<std::size_t>(width * height));
    if (const PixelLock lock(surface); lock) {
        for (int y = 0; y < height; ++y) {
            std::memcpy(pixels.data() + y * width, lock.At(0, y), static_cast<std::size_t>(width) * 4);
        }
    }
    return pixels;
}

void SetPixels(CSurface& surface, const std::vector<DWORD>& pixels) {
    const int width = surface.GetWidth();
    if (const PixelLock lock(surface); lock) {
        for (int y = 0; y < surface.GetHeight(); ++y) {
            std::memcpy(lock.At(0, y), pixels.data() + y * width, static_cast<std::size_t>(width) * 4);
        }
    }
}

}   // namespace rastel::test

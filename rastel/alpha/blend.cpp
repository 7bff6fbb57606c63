#include "rastel/alpha/blend.h"

#include <array>
#include <cstring>

#include "rastel/surface/kernels.h"
#include "rastel/surface/mmx.h"

using rastel::kernels::Rows;

namespace {

constexpr int bytesPerPixel = 4;
constexpr int narrowestVectorWidth = 4;

bool UseVectorForm(int width) {
    return UseMMX() && width >= narrowestVectorWidth;
}

// What one alpha adds to a colour byte, by the difference of source and background: (difference + 1) * alpha / 256,
// truncated towards zero. It is the difference plus one, so a lighter source is reached exactly at alpha 255.
class ConstTable {
public:
    explicit ConstTable(int alpha) {
        for (int difference = -255; difference <= 255; ++difference) {
            steps_[static_cast<std::size_t>(difference + 255)] =
                static_cast<int>(static_cast<long long>(difference + 1) * alpha / 256);
        }
    }
    unsigned char Blend(int back, int source) const {
        return static_cast<unsigned char>(back + steps_[static_cast<std::size_t>(source - back + 255)]);
    }

private:
    std::array<int, 511> steps_;
};

template <class Pixel>
void ForPixels(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch, const unsigned char* pBack,
               int backPitch, int width, int height, Pixel pixel) {
    for (int y = 0; y < height; ++y, pDst += dstPitch, pSrc += srcPitch, pBack += backPitch) {
        for (int i = 0; i < width * bytesPerPixel; i += bytesPerPixel) {
            pixel(pDst + i, pSrc + i, pBack + i);
        }
    }
}

}   // namespace

void AlphaLineCPU(unsigned char* pDst, const unsigned char* pSrc, const unsigned char* pAlpha, int count) {
    for (int x = 0; x < count; ++x) {
        const int alpha = pAlpha[x];
        for (int i = x * bytesPerPixel; i < x * bytesPerPixel + 3; ++i) {
            pDst[i] = static_cast<unsigned char>(pDst[i] + ((pSrc[i] - pDst[i]) * alpha >> 8));
        }
    }
}

void AlphaLineMMX(unsigned char* pDst, const unsigned char* pSrc, const unsigned char* pAlpha, int count) {
    Rows().alphaRect(pDst, 0, pSrc, 0, pAlpha, 0, count, 1);
}

void AlphaRectCPU(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                  const unsigned char* pAlpha, int alphaPitch, int width, int height) {
    for (int y = 0; y < height; ++y, pDst += dstPitch, pSrc += srcPitch, pAlpha += alphaPitch) {
        AlphaLineCPU(pDst, pSrc, pAlpha, width);
    }
}

void AlphaRectMMX(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                  const unsigned char* pAlpha, int alphaPitch, int width, int height) {
    Rows().alphaRect(pDst, dstPitch, pSrc, srcPitch, pAlpha, alphaPitch, width, height);
}

void AlphaRect(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch, const unsigned char* pAlpha,
               int alphaPitch, int width, int height) {
    const auto kernel = UseVectorForm(width) ? AlphaRectMMX : AlphaRectCPU;
    kernel(pDst, dstPitch, pSrc, srcPitch, pAlpha, alphaPitch, width, height);
}

void AlphaConstRectCPU(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                       const unsigned char* pBack, int backPitch, int width, int height, int alpha) {
    if (width < 1 || height < 1) {
        return;
    }
    const ConstTable table(alpha);
    ForPixels(pDst, dstPitch, pSrc, srcPitch, pBack, backPitch, width, height,
              [&](unsigned char* dst, const unsigned char* src, const unsigned char* back) {
                  for (int i = 0; i < 3; ++i) {
                      dst[i] = table.Blend(back[i], src[i]);
                  }
              });
}

void AlphaConstRectMMX(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                       const unsigned char* pBack, int backPitch, int width, int height, int alpha) {
    Rows().alphaConstRect(pDst, dstPitch, pSrc, srcPitch, pBack, backPitch, width, height, alpha);
}

void AlphaConstRect(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                    const unsigned char* pBack, int backPitch, int width, int height, int alpha) {
    const auto kernel = UseVectorForm(width) ? AlphaConstRectMMX : AlphaConstRectCPU;
    kernel(pDst, dstPitch, pSrc, srcPitch, pBack, backPitch, width, height, alpha);
}

void AlphaConstTransRectCPU(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                            const unsigned char* pBack, int backPitch, int width, int height, int alpha, DWORD key) {
    if (width < 1 || height < 1) {
        return;
    }
    const ConstTable table(alpha);
    ForPixels(pDst, dstPitch, pSrc, srcPitch, pBack, backPitch, width, height,
              [&](unsigned char* dst, const unsigned char* src, const unsigned char* back) {
                  DWORD pixel;
                  std::memcpy(&pixel, src, sizeof(pixel));
                  if (((pixel ^ key) & 0xFFFFFF) == 0) {
                      return;   // nothing is stored for it
                  }
                  for (int i = 0; i < 3; ++i) {
                      dst[i] = table.Blend(back[i], src[i]);
                  }
              });
}

void AlphaConstTransRectMMX(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                            const unsigned char* pBack, int backPitch, int width, int height, int alpha, DWORD key) {
    Rows().alphaConstTransRect(pDst, dstPitch, pSrc, srcPitch, pBack, backPitch, width, height, alpha, key);
}

void AlphaConstTransRect(unsigned char* pDst, int dstPitch, const unsigned char* pSrc, int srcPitch,
                         const unsigned char* pBack, int backPitch, int width, int height, int alpha, DWORD key) {
    const auto kernel = UseVectorForm(width) ? AlphaConstTransRectMMX : AlphaConstTransRectCPU;
    kernel(pDst, dstPitch, pSrc, srcPitch, pBack, backPitch, width, height, alpha, key);
}

// Blends into a composite that has a plane: colours are weighted by both coverages, and the plane is updated.
#include "rastel/alpha/alpha_channel.h"
#include "rastel/composite/adv_kernels.h"
#include "rastel/composite/adv_surface.h"
#include "rastel/surface/bounds.h"
#include "rastel/surface/kernels.h"
#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/surface.h"

using rastel::Covers;
using rastel::IsEmpty;
using rastel::PixelLock;
using rastel::kernels::Rows;

namespace {

// A composite's own sizes were those of its stores when it got them; a host can make a store anew since.
bool TakesAt(int x, int y, const CRect& rect, const CSurfaceBase* colors, const CSurfaceBase* plane) {
    const CRect drawn(x, y, x + rect.Width(), y + rect.Height());
    return colors && plane && Covers(*colors, drawn) && Covers(*plane, drawn);
}

// What is left of the target's coverage `da` under the coverage `a`. Blend and colour blend truncate on opposite sides.
int RestOfBlend(int a, int da) {
    return (255 - a) * da / 255;
}

int RestOfColorBlend(int a, int da) {
    return da - a * da / 255;
}

void OverPixel(unsigned char* target, unsigned char& plane, const unsigned char* source, int a, int rest) {
    const int coverage = rest + a;
    plane = static_cast<unsigned char>(coverage);
    if (coverage == 0) {
        return;
    }
    for (int i = 0; i < 3; ++i) {
        target[i] = static_cast<unsigned char>((source[i] * a + target[i] * rest) / coverage);
    }
}

template <class Rows, class Pixel>
void ForPixels(const Rows& rows, Pixel pixel) {
    for (int y = 0; y < rows.height; ++y) {
        unsigned char* const target = rows.target + static_cast<std::ptrdiff_t>(y) * rows.targetPitch;
        unsigned char* const plane = rows.plane + static_cast<std::ptrdiff_t>(y) * rows.planePitch;
        const unsigned char* const alpha = rows.alpha + static_cast<std::ptrdiff_t>(y) * rows.alphaPitch;
        for (int x = 0; x < rows.width; ++x) {
            pixel(target + x * 4, plane[x], alpha[x], x, y);
        }
    }
}

}   // namespace

// Where a blend draws, and through what: first pixels or bytes, pitches in bytes.
struct CAdvSurface::AdvRows {
    AdvRows(const PixelLock& colors, const PixelLock& ownPlane, const PixelLock& givenPlane, int x, int y,
            const CRect& rcSrc)
        : target(colors.At(x, y)),
          targetPitch(colors.Pitch()),
          plane(ownPlane.At(x, y)),
          planePitch(ownPlane.Pitch()),
          alpha(givenPlane.At(rcSrc.left, rcSrc.top)),
          alphaPitch(givenPlane.Pitch()),
          width(rcSrc.Width()),
          height(rcSrc.Height()) {}

    unsigned char* target;
    int targetPitch;
    unsigned char* plane;
    int planePitch;
    const unsigned char* alpha;
    int alphaPitch;
    int width;
    int height;
};

// The colours of the composite, its plane, the source's colours and the given plane are locked in this order.
template <class Draw>
int CAdvSurface::BlendAdv(int x, int y, CAdvSurface& src, CAlphaChannel& alpha, const CRect& rcSrc, Draw draw) {
    // The given plane was clipped, the source wasn't: it must cover the same rectangle.
    const bool reaches = src.m_pSurface && Covers(*src.m_pSurface, rcSrc) && Covers(alpha, rcSrc) &&
                         TakesAt(x, y, rcSrc, m_pSurface, m_pAlphaChannel);
    if (!m_pAlphaChannel || (!IsEmpty(rcSrc) && !reaches)) {
        return 0;
    }
    const PixelLock colors(*this);
    if (!colors) {
        return 0;
    }
    const PixelLock plane(*m_pAlphaChannel);
    if (!plane) {
        return 0;
    }
    const PixelLock source(src);
    if (!source) {
        return 0;
    }
    const PixelLock given(alpha);
    if (!given) {
        return 0;
    }
    draw(AdvRows(colors, plane, given, x, y, rcSrc), source.At(rcSrc.left, rcSrc.top), source.Pitch());
    return 1;
}

template <class Draw>
int CAdvSurface::BlendColorAdv(int x, int y, CAlphaChannel& alpha, const CRect& rcSrc, Draw draw) {
    if (!m_pAlphaChannel ||
        (!IsEmpty(rcSrc) && !(Covers(alpha, rcSrc) && TakesAt(x, y, rcSrc, m_pSurface, m_pAlphaChannel)))) {
        return 0;
    }
    const PixelLock colors(*this);
    if (!colors) {
        return 0;
    }
    const PixelLock plane(*m_pAlphaChannel);
    if (!plane) {
        return 0;
    }
    const PixelLock given(alpha);
    if (!given) {
        return 0;
    }
    draw(AdvRows(colors, plane, given, x, y, rcSrc));
    return 1;
}

int CAdvSurface::InternalAlphaBltAdvCPU(int x, int y, CAdvSurface& src, CAlphaChannel& alpha, CRect& rcSrc) {
    return BlendAdv(x, y, src, alpha, rcSrc, [](const AdvRows& rows, const unsigned char* source, int sourcePitch) {
        ForPixels(rows, [=](unsigned char* target, unsigned char& plane, int a, int px, int py) {
            const unsigned char* const pixel = source + static_cast<std::ptrdiff_t>(py) * sourcePitch + px * 4;
            OverPixel(target, plane, pixel, a, RestOfBlend(a, plane));
        });
    });
}

int CAdvSurface::InternalAlphaBltAdvMMX(int x, int y, CAdvSurface& src, CAlphaChannel& alpha, CRect& rcSrc) {
    InitReciprocalTable();
    return BlendAdv(x, y, src, alpha, rcSrc, [](const AdvRows& rows, const unsigned char* source, int sourcePitch) {
        Rows().alphaAdvRect(rows.target, rows.targetPitch, rows.plane, rows.planePitch, source, sourcePitch, rows.alpha,
                            rows.alphaPitch, rows.width, rows.height);
    });
}

int CAdvSurface::InternalAlphaColorBltAdvCPU(int x, int y, DWORD color, CAlphaChannel& alpha, CRect& rcSrc) {
    // A COLORREF has red in its lowest byte; pixels have blue there.
    const unsigned char source[3] = {static_cast<unsigned char>(color >> 16), static_cast<unsigned char>(color >> 8),
                                     static_cast<unsigned char>(color)};
    return BlendColorAdv(x, y, alpha, rcSrc, [&](const AdvRows& rows) {
        ForPixels(rows, [&](unsigned char* target, unsigned char& plane, int a, int, int) {
            OverPixel(target, plane, source, a, RestOfColorBlend(a, plane));
        });
    });
}

int CAdvSurface::InternalAlphaColorBltAdvMMX(int x, int y, DWORD color, CAlphaChannel& alpha, CRect& rcSrc) {
    InitReciprocalTable();
    return BlendColorAdv(x, y, alpha, rcSrc, [=](const AdvRows& rows) {
        Rows().alphaColorAdvRect(rows.target, rows.targetPitch, rows.plane, rows.planePitch, CSurface::RGB2COLOR(color),
                                 rows.alpha, rows.alphaPitch, rows.width, rows.height);
    });
}

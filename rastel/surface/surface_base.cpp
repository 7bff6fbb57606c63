#include "rastel/surface/surface_base.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "rastel/platform/user.h"
#include "rastel/surface/kernels.h"
#include "rastel/surface/pixel_lock.h"

namespace {

// A rectangle with room for sums of 32-bit numbers, so that no position or size can overflow while it is clipped.
struct WideRect {
    std::int64_t left, top, right, bottom;

    std::int64_t Width() const { return right - left; }
    std::int64_t Height() const { return bottom - top; }
    bool operator==(const WideRect&) const = default;
};

WideRect Widened(const RECT& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

WideRect Common(const WideRect& a, const WideRect& b) {
    const WideRect common = {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                             std::min(a.bottom, b.bottom)};
    const auto isEmpty = [](const WideRect& rect) { return rect.Width() <= 0 || rect.Height() <= 0; };
    return isEmpty(a) || isEmpty(b) || isEmpty(common) ? WideRect{0, 0, 0, 0} : common;
}

LONG Narrowed(std::int64_t value) {
    constexpr std::int64_t low = std::numeric_limits<LONG>::min();
    constexpr std::int64_t high = std::numeric_limits<LONG>::max();
    return static_cast<LONG>(std::clamp(value, low, high));
}

CRect Narrowed(const WideRect& rect) {
    return CRect(Narrowed(rect.left), Narrowed(rect.top), Narrowed(rect.right), Narrowed(rect.bottom));
}

}   // namespace

std::atomic<LONG> CSurfaceBase::m_SurfacesAllocated = 0;
std::atomic<LONG> CSurfaceBase::m_SurfacesMemory = 0;

CSurfaceBase::CSurfaceBase() {
    ++m_SurfacesAllocated;
}

CSurfaceBase::~CSurfaceBase() {
    --m_SurfacesAllocated;
}

int CSurfaceBase::ClipRects(CRect& rcDst, CRect& rcSrc, int x, int y, CSurfaceBase& src, const CRect* pSrcRect,
                            const CRect* pClip) {
    const WideRect whole = {0, 0, src.m_Width, src.m_Height};
    WideRect source = whole;
    if (pSrcRect) {
        source = Widened(*pSrcRect);
        source.left = std::max(source.left, whole.left);
        source.top = std::max(source.top, whole.top);
        source.right = std::min(source.right, whole.right);
        source.bottom = std::min(source.bottom, whole.bottom);
    }

    const WideRect want = {x, y, x + source.Width(), y + source.Height()};
    WideRect limit = {0, 0, m_Width, m_Height};
    if (pClip) {
        limit = Common(limit, Widened(*pClip));
    }

    WideRect target = Common(want, limit);
    if (target != want) {
        // The source follows the cut edge by edge. Where `want` and `limit` don't meet, `target` starts as all zero
        // and ends as no rectangle to draw in; the source's size then tells the caller.
        if (want.left < limit.left) {
            source.left += limit.left - want.left;
            target.left = limit.left;
        }
        if (want.right > limit.right) {
            source.right += limit.right - want.right;
            target.right = limit.right;
        }
        if (want.top < limit.top) {
            source.top += limit.top - want.top;
            target.top = limit.top;
        }
        if (want.bottom > limit.bottom) {
            source.bottom += limit.bottom - want.bottom;
            target.bottom = limit.bottom;
        }
    }

    rcDst = Narrowed(target);
    rcSrc = Narrowed(source);
    return source.Width() >= 0 && source.Height() >= 0 && target.Width() >= 0 && target.Height() >= 0;
}

int CSurfaceBase::InternalCopyBlt(int x, int y, CSurfaceBase& src, const CRect& rcSrc) {
    if (rcSrc.Width() < 1 || rcSrc.Height() < 1) {
        return 1;
    }
    if (src.GetBytesPrPixel() != GetBytesPrPixel()) {
        return 0;
    }
    const rastel::PixelLock target(*this);
    if (!target) {
        return 0;
    }
    const rastel::PixelLock source(src);
    if (!source) {
        return 0;
    }
    rastel::kernels::Rows().copyBytesRect(target.At(x, y), target.Pitch(), source.At(rcSrc.left, rcSrc.top),
                                          source.Pitch(), rcSrc.Width() * GetBytesPrPixel(), rcSrc.Height());
    return 1;
}

int CSurfaceBase::InternalStretchBlt(CRect& rcDst, CSurfaceBase& src, CRect& rcSrc, CRect* pClip) {
    const rastel::ScopedDc target(*this);
    if (!target) {
        return 0;
    }
    const rastel::ScopedDc source(src);
    if (!source) {
        return 0;
    }
    ::SaveDC(target.Get());
    if (pClip) {
        ::IntersectClipRect(target.Get(), pClip->left, pClip->top, pClip->right, pClip->bottom);
    }
    const int result = ::StretchBlt(target.Get(), rcDst.left, rcDst.top, rcDst.Width(), rcDst.Height(), source.Get(),
                                    rcSrc.left, rcSrc.top, rcSrc.Width(), rcSrc.Height(), SRCCOPY);
    ::RestoreDC(target.Get(), -1);
    return result;
}

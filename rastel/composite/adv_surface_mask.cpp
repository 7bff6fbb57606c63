// The masks that a composite makes of itself.
#include <cstdint>
#include <limits>

#include "rastel/alpha/alpha_channel.h"
#include "rastel/composite/adv_surface.h"
#include "rastel/display/display_manager.h"
#include "rastel/surface/kernels.h"
#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/reference.h"
#include "rastel/surface/surface.h"

using rastel::PixelLock;
using rastel::Reference;

namespace {

Reference<CAlphaChannel> NewPlane(std::int64_t width, std::int64_t height) {
    CDisplayManager* const manager = GetDisplayManager();
    constexpr std::int64_t limit = std::numeric_limits<int>::max();
    if (!manager || width > limit || height > limit || width < 0 || height < 0) {
        return nullptr;
    }
    return Reference<CAlphaChannel>(manager->CreateAlphaChannel(static_cast<int>(width), static_cast<int>(height)));
}

}   // namespace

int CAdvSurface::ApplyTransparentColorToAlpha() {
    if (!m_pSurface || GetColorKey() == noColorKey) {
        return 0;
    }
    if (!m_pAlphaChannel) {
        const Reference<CAlphaChannel> plane = NewPlane(m_Width, m_Height);
        if (!plane) {
            return 0;
        }
        SetAlphaChannel(plane.get());
        plane->Fill(nullptr, 255, nullptr);
    }
    if (!m_pAlphaChannel) {
        return 0;
    }
    if (!m_pAlphaChannel->TransparentMask(0, 0, *m_pSurface, CSurface::RGB2COLOR(GetColorKey()), nullptr, nullptr)) {
        return 0;
    }
    SetColorKey(noColorKey);
    return 1;
}

CAlphaChannel* CAdvSurface::MakeMask(int border, unsigned char outside, unsigned char inside) {
    const std::int64_t rim = 2 * static_cast<std::int64_t>(border);
    Reference<CAlphaChannel> mask = NewPlane(m_Width + rim, m_Height + rim);
    if (!mask) {
        return nullptr;
    }
    if (!mask->Fill(nullptr, outside, nullptr)) {
        return nullptr;
    }
    if (m_pAlphaChannel) {
        const bool made =
            mask->CopyBlt(border, border, *m_pAlphaChannel, nullptr, nullptr) && mask->TressHold(128, outside, inside);
        return made ? mask.release() : nullptr;
    }
    if (GetColorKey() == noColorKey) {
        CRect inner(border, border, mask->GetWidth() - border, mask->GetHeight() - border);
        return mask->Fill(&inner, inside, nullptr) ? mask.release() : nullptr;
    }
    if (!m_pSurface || m_pSurface->GetWidth() < m_Width || m_pSurface->GetHeight() < m_Height) {
        return nullptr;   // the store was made anew behind our back
    }

    const DWORD key = CSurface::RGB2COLOR(GetColorKey());
    const PixelLock pixels(*this);
    if (!pixels) {
        return nullptr;
    }
    // The lock ends before the mask is handed out, and before it would be released.
    const PixelLock target(*mask);
    if (!target) {
        return nullptr;
    }
    // A border below 0 leaves only the middle of the composite; it shows from (0, 0) of the mask on.
    const int cut = border < 0 ? -border : 0;
    rastel::kernels::Rows().keyMaskRect(target.At(border + cut, border + cut), target.Pitch(), pixels.At(cut, cut),
                                        pixels.Pitch(), m_Width - 2 * cut, m_Height - 2 * cut, key, outside, inside);
    return mask.release();
}

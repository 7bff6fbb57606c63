#include "examples/showcase/composites.h"

#include <algorithm>
#include <cmath>

#include "examples/showcase/stock.h"

namespace rastel::showcase {

namespace {

// The middle of a blurred plane, so that it has the size it was blurred from.
bool BlurInPlace(CAlphaChannel& plane, int radius) {
    const example::Plane soft(plane.Blur(radius));
    CRect middle(radius, radius, radius + plane.GetWidth(), radius + plane.GetHeight());
    return soft && plane.CopyBlt(0, 0, *soft, &middle, nullptr);
}

}   // namespace

Composite Around(CSurface& surface) {
    Composite composite(new CAdvSurface);
    composite->SetSurface(&surface);
    return composite;
}

Composite KeyedComposite(CSurface& sprite) {
    Composite composite = Around(sprite);
    composite->SetColorKey(spriteKey);
    return composite;
}

Composite Disc(CDisplayManager& manager, int side, int softness, COLORREF color) {
    side = std::max(side, 8);
    softness = std::clamp(softness, 1, side / 4);
    Composite disc(manager.CreateAdvSurface(side, side, 1));
    if (!disc || !disc->GetAlphaChannel()) {
        return nullptr;
    }
    disc->FillColor(nullptr, color, nullptr);
    CAlphaChannel& plane = *disc->GetAlphaChannel();
    plane.Fill(nullptr, 0, nullptr);
    const double radius = side / 2.0 - softness;
    for (int y = 0; y < side; ++y) {
        const double up = y + 0.5 - side / 2.0;
        if (std::abs(up) < radius) {
            const int half = static_cast<int>(std::lround(std::sqrt(radius * radius - up * up)));
            CRect row(side / 2 - half, y, side / 2 + half, y + 1);
            plane.Fill(&row, 255, nullptr);
        }
    }
    return BlurInPlace(plane, softness) ? std::move(disc) : nullptr;
}

Composite SoftEdged(CDisplayManager& manager, CSurface& picture, int softness) {
    const int width = picture.GetWidth(), height = picture.GetHeight();
    softness = std::clamp(softness, 1, std::max(std::min(width, height) / 4, 1));
    Composite composite(manager.CreateAdvSurface(width, height, 1));
    if (!composite || !composite->GetAlphaChannel()) {
        return nullptr;
    }
    composite->GetSurface()->CopyBlt(0, 0, picture, nullptr, nullptr);
    CRect inner(softness, softness, width - softness, height - softness);
    composite->GetAlphaChannel()->Fill(nullptr, 0, nullptr);
    composite->GetAlphaChannel()->Fill(&inner, 255, nullptr);
    return BlurInPlace(*composite->GetAlphaChannel(), softness) ? std::move(composite) : nullptr;
}

void DrawChecks(CSurface& page, const CRect& area, int side) {
    side = std::max(side, 1);
    CRect limit(area);
    for (int y = area.top; y < area.bottom; y += side) {
        for (int x = area.left; x < area.right; x += side) {
            const bool dark = ((x - area.left) / side + (y - area.top) / side) % 2 != 0;
            CRect square(x, y, x + side, y + side);
            page.FillColor(&square, dark ? RGB(196, 196, 200) : RGB(236, 236, 238), &limit);
        }
    }
}

}   // namespace rastel::showcase

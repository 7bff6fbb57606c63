#include <functional>

#include "examples/showcase/paint.h"
#include "examples/showcase/panels.h"

namespace rastel::showcase {

namespace {

// A sprite in the middle of its key colour, in the size of a picture of this panel.
example::Surface SpriteSheet(const Sheet& sheet, CSurface& sprite, const CSize& size) {
    example::Surface surface(sheet.manager.CreateSurface(size.cx, size.cy));
    if (surface) {
        CRect target = FitInside(CSize(sprite.GetWidth(), sprite.GetHeight()), CRect(0, 0, size.cx, size.cy));
        surface->FillColor(nullptr, spriteKey, nullptr);
        surface->StretchBlt(&target, sprite, nullptr, nullptr);
    }
    return surface;
}

}   // namespace

void DrawPlanes(const Sheet& sheet, const CRect& area) {
    constexpr int columns = 3, rows = 2;
    const int gap = sheet.layout.Length(12);
    const int note = sheet.layout.Length(22);
    const CSize size(std::max((area.Width() - (columns - 1) * gap) / columns, 1),
                     std::max(area.Height() / rows - note, 1));
    const CRect whole(0, 0, size.cx, size.cy);
    const example::Surface cup = SpriteSheet(sheet, *sheet.stock.cup, size);
    const example::Surface balloon = SpriteSheet(sheet, *sheet.stock.balloon, size);
    const example::Plane brightness(sheet.manager.CreateAlphaChannel(size.cx, size.cy));
    const example::Plane coverage(sheet.manager.CreateAlphaChannel(size.cx, size.cy));
    if (!cup || !balloon || !brightness || !coverage) {
        return;
    }
    const Stock& stock = sheet.stock;
    CRect target(whole);
    CRect part = CoverOf(CSize(stock.brightness->GetWidth(), stock.brightness->GetHeight()), size);
    brightness->StretchBlt(target, *stock.brightness, &part, nullptr);
    target = FitInside(CSize(stock.cupCoverage->GetWidth(), stock.cupCoverage->GetHeight()), whole);
    coverage->StretchBlt(target, *stock.cupCoverage, nullptr, nullptr);

    const DWORD key = CSurface::RGB2COLOR(spriteKey);
    struct Entry {
        const wchar_t* name;
        std::function<void(CAlphaChannel&)> make;
    };
    const Entry entries[] = {
        {L"OpaqueMask", [&](CAlphaChannel& plane) { plane.OpaqueMask(0, 0, *cup, key, nullptr, nullptr); }},
        {L"TransparentMask",
         [&](CAlphaChannel& plane) {
             for (int row = 0; row < size.cy; ++row) {
                 CRect line(0, row, size.cx, row + 1);
                 plane.Fill(&line, static_cast<unsigned char>(255 - row * 190 / size.cy), nullptr);
             }
             plane.TransparentMask(0, 0, *balloon, key, nullptr, nullptr);
         }},
        {L"BltMix",
         [&](CAlphaChannel& plane) {
             plane.OpaqueMask(0, 0, *balloon, key, nullptr, nullptr);
             plane.Multiply(nullptr, 170);
             plane.BltMix(0, 0, *brightness, nullptr, nullptr);
         }},
        {L"Merge",
         [&](CAlphaChannel& plane) {
             plane.CopyBlt(0, 0, *brightness, nullptr, nullptr);
             plane.Merge(0, 0, *coverage, nullptr, nullptr);
         }},
        {L"Invert",
         [&](CAlphaChannel& plane) {
             plane.CopyBlt(0, 0, *brightness, nullptr, nullptr);
             plane.Invert(nullptr);
         }},
        {L"Multiply",
         [&](CAlphaChannel& plane) {
             CRect right(size.cx / 2, 0, size.cx, size.cy);
             plane.CopyBlt(0, 0, *brightness, nullptr, nullptr);
             plane.Multiply(&right, 112);
         }},
    };
    int index = 0;
    for (const Entry& entry : entries) {
        const int left = area.left + index % columns * (size.cx + gap);
        const int top = area.top + index / columns * (size.cy + note);
        const example::Plane plane(sheet.manager.CreateAlphaChannel(size.cx, size.cy));
        if (plane) {
            entry.make(*plane);
            ShowPlane(sheet.surface, left, top, *plane);
        }
        DrawFrame(sheet.surface, CRect(left, top, left + size.cx, top + size.cy), ink::edge, 1);
        WriteText(sheet.surface, left + size.cx / 2, top + size.cy + sheet.layout.Length(3), entry.name,
                  {sheet.layout.Length(11), FW_NORMAL, ink::quiet, TA_CENTER}, area);
        ++index;
    }
}

}   // namespace rastel::showcase

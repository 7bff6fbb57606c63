#include "examples/showcase/paint.h"

#include <algorithm>
#include <cmath>

#include "examples/showcase/layout.h"
#include "rastel/surface/pixel_lock.h"

namespace rastel::showcase {

namespace {

class FontInContext {
public:
    FontInContext(HDC context, const TextStyle& style)
        : context_(context),
          font_(::CreateFontW(-style.height, 0, 0, 0, style.weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                              OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, DEFAULT_PITCH, L"Verdana")),
          old_(font_ ? ::SelectObject(context, font_) : nullptr) {}
    ~FontInContext() {
        if (old_) {
            ::SelectObject(context_, old_);
        }
        if (font_) {
            ::DeleteObject(font_);
        }
    }
    FontInContext(const FontInContext&) = delete;
    FontInContext& operator=(const FontInContext&) = delete;

private:
    HDC context_;
    HFONT font_;
    HGDIOBJ old_;
};

int Between(int from, int to, int step, int steps) {
    return from + (to - from) * step / std::max(steps, 1);
}

}   // namespace

void FillGradient(CSurface& page, const CRect& rect, COLORREF top, COLORREF bottom) {
    const int last = rect.Height() - 1;
    for (int line = 0; line <= last; ++line) {
        CRect row(rect.left, rect.top + line, rect.right, rect.top + line + 1);
        page.FillColor(&row,
                       RGB(Between(GetRValue(top), GetRValue(bottom), line, last),
                           Between(GetGValue(top), GetGValue(bottom), line, last),
                           Between(GetBValue(top), GetBValue(bottom), line, last)),
                       nullptr);
    }
}

void DrawFrame(CSurface& page, const CRect& rect, COLORREF color, int thickness) {
    CRect sides[] = {CRect(rect.left, rect.top, rect.right, rect.top + thickness),
                     CRect(rect.left, rect.bottom - thickness, rect.right, rect.bottom),
                     CRect(rect.left, rect.top, rect.left + thickness, rect.bottom),
                     CRect(rect.right - thickness, rect.top, rect.right, rect.bottom)};
    for (CRect& side : sides) {
        page.FillColor(&side, color, nullptr);
    }
}

// Sheets of shade, each smaller than the one before: they add up to the middle's darkness.
void DropShadow(CSurface& page, const CRect& rect, const Shadow& shadow, const CRect& clip) {
    const int sheets = std::max(shadow.softness, 1);
    const double share = std::clamp(shadow.percent, 0, 99) / 100.0;
    const int percent = std::max(1, static_cast<int>(std::lround(100 * (1 - std::pow(1 - share, 1.0 / sheets)))));
    CRect sheet(rect);
    sheet.OffsetRect(shadow.offset.cx, shadow.offset.cy);
    sheet.InflateRect(sheets / 2, sheets / 2);
    for (int index = 0; index < sheets; ++index) {
        CRect shown;
        if (shown.IntersectRect(&sheet, &clip)) {
            page.ShadowBlt(&shown, percent);
        }
        sheet.DeflateRect(1, 1);
    }
}

void WriteText(CSurface& page, int x, int y, const std::wstring& text, const TextStyle& style, const CRect& clip) {
    CRect limit(clip);
    CSurfaceDC context(page, &limit);
    const HDC dc = context;
    if (!dc) {
        return;
    }
    const FontInContext font(dc, style);
    ::SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, style.color);
    ::SetTextAlign(dc, style.align);
    ::TextOutW(dc, x, y, text.c_str(), static_cast<int>(text.size()));
}

void CoverWith(CSurface& page, const CRect& rect, CSurface& source) {
    CRect target(rect);
    CRect part = CoverOf(CSize(source.GetWidth(), source.GetHeight()), target.Size());
    page.StretchBlt(&target, source, &part, nullptr);
}

void ShowPlane(CSurface& page, int x, int y, CAlphaChannel& plane) {
    const int width = std::min(plane.GetWidth(), page.GetWidth() - x);
    const int height = std::min(plane.GetHeight(), page.GetHeight() - y);
    const PixelLock target(page);
    const PixelLock source(plane);
    if (!target || !source || x < 0 || y < 0) {
        return;
    }
    for (int line = 0; line < height; ++line) {
        auto* const pixels = reinterpret_cast<DWORD*>(target.At(x, y + line));
        const unsigned char* const bytes = source.At(0, line);
        for (int column = 0; column < width; ++column) {
            pixels[column] = bytes[column] * 0x010101u;
        }
    }
}

example::Surface ScaledSprite(CDisplayManager& manager, CSurface& sprite, int width, int height) {
    example::Surface scaled(manager.CreateSurface(std::max(width, 1), std::max(height, 1)));
    if (scaled && !scaled->StretchBlt(nullptr, sprite, nullptr, nullptr)) {
        scaled.reset();
    }
    return scaled;
}

}   // namespace rastel::showcase

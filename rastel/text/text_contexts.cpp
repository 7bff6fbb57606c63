#include "rastel/text/text_contexts.h"

#include <algorithm>
#include <cstdint>

#include "rastel/alpha/alpha_channel.h"
#include "rastel/composite/adv_surface.h"

namespace rastel::text {

namespace {

constexpr COLORREF kOpaque = 0xFFFFFF;   // what a plane shows as 255

void StrokeLine(HDC hDC, int x, int y, int length, int thickness, COLORREF color) {
    if (!hDC) {
        return;
    }
    const HPEN pen = ::CreatePen(PS_SOLID, thickness, color);
    const HGDIOBJ oldPen = pen ? ::SelectObject(hDC, pen) : nullptr;
    if (oldPen) {
        ::MoveToEx(hDC, x, y, nullptr);
        ::LineTo(hDC, static_cast<int>(std::min<std::int64_t>(std::int64_t{x} + length, INT32_MAX)), y);
        ::SelectObject(hDC, oldPen);
    }
    if (pen) {
        ::DeleteObject(pen);
    }
}

}   // namespace

void TextContexts::Prepare(HDC hDC, COLORREF color, HGDIOBJ* oldFont) {
    *oldFont = font_ ? ::SelectObject(hDC, font_) : nullptr;
    ::SetBkMode(hDC, TRANSPARENT);
    ::SetTextAlign(hDC, TA_BASELINE);
    ::SetTextColor(hDC, color);
}

void TextContexts::Open() {
    isOpen_ = true;
    colors_.emplace(target_, &clip_);
    if (*colors_) {
        Prepare(*colors_, color_, &oldColorsFont_);
    }
    if (CAlphaChannel* const plane = target_.GetAlphaChannel()) {
        plane_ = plane->GetDC();
        if (plane_) {
            Prepare(plane_, kOpaque, &oldPlaneFont_);
        }
    }
}

void TextContexts::Write(int x, int y, const wchar_t* text, int length) {
    if (!isOpen_) {
        Open();
    }
    if (*colors_) {
        ::TextOutW(*colors_, x, y, text, length);
    }
    if (plane_) {
        ::TextOutW(plane_, x, y, text, length);
    }
}

void TextContexts::Close() {
    if (!isOpen_) {
        return;
    }
    isOpen_ = false;
    if (plane_) {
        if (oldPlaneFont_) {
            ::SelectObject(plane_, oldPlaneFont_);
        }
        target_.GetAlphaChannel()->ReleaseDC(plane_);
        plane_ = nullptr;
        oldPlaneFont_ = nullptr;
    }
    if (oldColorsFont_) {
        ::SelectObject(*colors_, oldColorsFont_);
        oldColorsFont_ = nullptr;
    }
    colors_.reset();
}

void TextContexts::Underline(int x, int y, int length, int thickness) {
    Close();
    {
        CSurfaceDC colors(target_, &clip_);
        StrokeLine(colors, x, y, length, thickness, color_);
    }
    if (CAlphaChannel* const plane = target_.GetAlphaChannel()) {
        CSurfaceDC opaque(*plane, nullptr);
        StrokeLine(opaque, x, y, length, thickness, kOpaque);
    }
}

}   // namespace rastel::text

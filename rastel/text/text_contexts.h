// The device contexts on which a renderer leaves characters and underlines to GDI: one on the colours and, where the
// target has a plane, one on that.
//
// Characters that follow each other share their contexts. They must be closed before the stores are blended into, since
// a store on the device cannot be locked while a context is out.
#pragma once

#include <optional>

#include "rastel/platform/framework.h"
#include "rastel/platform/gdi.h"
#include "rastel/surface/surface_dc.h"

class CAdvSurface;

namespace rastel::text {

class TextContexts {
public:
    // The clip is for the colours only. What is passed must outlive this.
    TextContexts(CAdvSurface& target, const CRect& clip, HFONT font, COLORREF color)
        : target_(target), clip_(clip), font_(font), color_(color) {}
    ~TextContexts() { Close(); }
    TextContexts(const TextContexts&) = delete;
    TextContexts& operator=(const TextContexts&) = delete;

    void Write(int x, int y, const wchar_t* text, int length);   // from the baseline
    void Close();

    // A line of that thickness from (x, y) on, `length` pixels, on contexts of its own.
    void Underline(int x, int y, int length, int thickness);

private:
    void Open();
    void Prepare(HDC hDC, COLORREF color, HGDIOBJ* oldFont);

    CAdvSurface& target_;
    CRect clip_;
    HFONT font_;
    COLORREF color_;
    bool isOpen_ = false;
    std::optional<CSurfaceDC> colors_;
    HDC plane_ = nullptr;
    HGDIOBJ oldColorsFont_ = nullptr;
    HGDIOBJ oldPlaneFont_ = nullptr;
};

}   // namespace rastel::text

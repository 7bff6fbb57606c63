// The strokes that every panel is made of. What clips to nothing, or fails, is not drawn.
#pragma once

#include <string>

#include "examples/support/stores.h"

namespace rastel::showcase {

namespace ink {
inline constexpr COLORREF white = RGB(255, 255, 255);
inline constexpr COLORREF paper = RGB(253, 252, 249);
inline constexpr COLORREF edge = RGB(208, 202, 190);
inline constexpr COLORREF text = RGB(36, 43, 58);
inline constexpr COLORREF quiet = RGB(112, 112, 116);
inline constexpr COLORREF accent = RGB(226, 87, 44);
}   // namespace ink

// From the top colour to the bottom one, a line at a time.
void FillGradient(CSurface& page, const CRect& rect, COLORREF top, COLORREF bottom);

void DrawFrame(CSurface& page, const CRect& rect, COLORREF color, int thickness);

struct Shadow {
    CSize offset;
    int softness;   // pixels over which it fades
    int percent;    // how dark it is in the middle
};

// The shadow that a sheet over `rect` throws; nothing is drawn outside `clip`.
void DropShadow(CSurface& page, const CRect& rect, const Shadow& shadow, const CRect& clip);

struct TextStyle {
    int height;   // pixels of a letter's em square
    int weight;
    COLORREF color;
    UINT align = TA_LEFT;
};

// (x, y) is the top left corner of the text, its top centre or its top right corner, as the style aligns it.
void WriteText(CSurface& page, int x, int y, const std::wstring& text, const TextStyle& style, const CRect& clip);

// The middle of the source, in the shape of `rect`, over all of it.
void CoverWith(CSurface& page, const CRect& rect, CSurface& source);

// A plane's bytes as greys.
void ShowPlane(CSurface& page, int x, int y, CAlphaChannel& plane);

// A copy of a sprite that fits the size, its key colour kept: a stretch picks pixels and mixes none.
example::Surface ScaledSprite(CDisplayManager& manager, CSurface& sprite, int width, int height);

}   // namespace rastel::showcase

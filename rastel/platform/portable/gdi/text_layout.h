// A line of text as positioned coverage: what to blend where. Knows fonts, no context and no pixels.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "rastel/platform/portable/gdi/font_engine.h"
#include "rastel/platform/portable/gdi/glyph_image.h"

namespace rastel::platform {

// Where a line goes. x, y is the reference point; `align` are TA_ bits that say which point of the line lies there.
struct TextPlacement {
    int x = 0;
    int y = 0;
    UINT align = TA_LEFT | TA_TOP;
    bool cell = false;   // the cell behind the line is wanted, too
    RECT visible{};      // nothing outside is going to be looked at
};

struct PlacedImage {
    int x = 0;   // left column and top row
    int y = 0;
    std::shared_ptr<const GlyphImage> image;
};

// An upright bar is a rectangle, a turned one an image.
struct TextBar {
    RECT rect{};
    PlacedImage turned;   // image null: use `rect`
};

struct TextLine {
    std::int64_t width = 0;   // along the line
    POINT end{};              // where the reference point of a following line lies; TA_UPDATECP goes there
    std::vector<TextBar> cell;
    std::vector<PlacedImage> glyphs;
    std::vector<TextBar> bars;   // underline, strike-out
};

// Sum of the advances, in pixels.
std::int64_t LineWidth(RealizedFont& font, const std::u32string& text);

TextLine LayOutLine(FontEngine& engine, RealizedFont& font, const std::u32string& text, const TextPlacement& placement);

}   // namespace rastel::platform

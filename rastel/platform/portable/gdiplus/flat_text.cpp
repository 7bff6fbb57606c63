// Strings: broken into lines, aligned in their rectangle, drawn as glyphs or as outlines.
#include <algorithm>
#include <cmath>
#include <cwchar>
#include <utility>

#include "rastel/platform/framework/characters.h"
#include "rastel/platform/portable/gdiplus/canvas_graphics.h"
#include "rastel/platform/portable/gdiplus/outline.h"
#include "rastel/platform/portable/gdiplus/string_font.h"

using rastel::platform::AppendUtf8;
using rastel::platform::IsSurrogate;
using rastel::platform::gdip::BrushOf;
using rastel::platform::gdip::FontObject;
using rastel::platform::gdip::GraphicsObject;
using rastel::platform::gdip::Guarded;
using rastel::platform::gdip::ObjectOf;
using rastel::platform::gdip::Outline;
using rastel::platform::gdip::SelectFont;
using rastel::platform::gdip::StringFormatObject;

namespace Gdiplus {

namespace {

constexpr int longestText = 1 << 16;

struct Surface {
    Surface() : surface(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1)), cairo(cairo_create(surface)) {}
    ~Surface() {
        cairo_destroy(cairo);
        cairo_surface_destroy(surface);
    }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;
    cairo_surface_t* surface;
    cairo_t* cairo;
};

struct Line {
    std::string text;   // UTF-8
    double width = 0;
};

struct Layout {
    std::vector<Line> lines;
    double ascent = 0, height = 0;   // of a line
    double width = 0;                // of the longest one
    double Top(const RectF& rect, StringAlignment align) const {
        const double free = rect.Height - height * static_cast<double>(lines.size());
        return rect.Y + (align == StringAlignmentCenter ? free / 2 : align == StringAlignmentFar ? free : 0);
    }
};

// Measures text in a font of any size.
struct Ruler {
    cairo_t* cairo;
    double factor;   // of the font that cairo has

    double WidthOf(const std::string& text) const {
        cairo_text_extents_t extents{};
        cairo_text_extents(cairo, text.c_str(), &extents);
        return extents.x_advance * factor;
    }
};

// Words that don't fit go to the next line; one that is too long for any has a line of its own. Widths add up: cairo
// moves no letter closer to another.
void AddParagraph(const Ruler& ruler, const std::string& text, double limit, std::vector<Line>& lines) {
    if (!(limit > 0)) {
        lines.push_back({text, ruler.WidthOf(text)});
        return;
    }
    Line line;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t space = std::min(text.find(' ', at), text.size());
        const std::string word = text.substr(at, space - at), further = ' ' + word;
        const double width = ruler.WidthOf(line.text.empty() ? word : further);
        if (!line.text.empty() && line.width + width > limit) {
            lines.push_back(std::move(line));
            line = {word, ruler.WidthOf(word)};
        } else {
            line.text += line.text.empty() ? word : further;
            line.width += width;
        }
        at = space + 1;
    }
    lines.push_back(std::move(line));
}

Layout LayOut(const WCHAR* text, int length, const FontObject& font, const RectF& rect, int flags) {
    const Surface surface;
    const Ruler ruler{surface.cairo, SelectFont(surface.cairo, font)};
    Layout layout;
    cairo_font_extents_t extents{};
    cairo_font_extents(surface.cairo, &extents);
    layout.ascent = extents.ascent * ruler.factor;
    layout.height = std::max(extents.height, extents.ascent + extents.descent) * ruler.factor;
    const double limit = (flags & StringFormatFlagsNoWrap) != 0 ? 0 : rect.Width;
    std::string paragraph;
    for (int i = 0; i < length; ++i) {
        const auto code = static_cast<char32_t>(text[i]);
        if (code == U'\n') {
            AddParagraph(ruler, paragraph, limit, layout.lines);
            paragraph.clear();
        } else if (code >= 0x20) {
            AppendUtf8(paragraph, code < 0x110000 && !IsSurrogate(code) ? code : U'\uFFFD');
        } else if (code == U'\t') {
            paragraph += "    ";
        }
    }
    AddParagraph(ruler, paragraph, limit, layout.lines);
    for (const Line& line : layout.lines) {
        layout.width = std::max(layout.width, line.width);
    }
    return layout;
}

// The length that is meant; -1: nonsense.
int LengthOf(const WCHAR* text, INT length) {
    const std::size_t limit = length < 0 ? longestText : static_cast<std::size_t>(std::min(length, longestText));
    std::size_t count = 0;
    while (count < limit && text[count] != 0) {
        ++count;
    }
    return length < -1 ? -1 : static_cast<int>(count);
}

bool IsSane(const RectF& rect) {
    const float values[] = {rect.X, rect.Y, rect.Width, rect.Height};
    return std::ranges::all_of(values, [](float value) { return std::isfinite(value); });
}

}   // namespace

namespace DllExports {

GpStatus GdipMeasureString(GpGraphics* graphics, const WCHAR* text, INT length, const GpFont* font, const RectF* layout,
                           const GpStringFormat* format, RectF* bounds, INT* charactersFitted, INT* linesFilled) {
    if (!graphics || !text || !font || !layout || !bounds || !IsSane(*layout) || LengthOf(text, length) < 0) {
        return InvalidParameter;
    }
    return Guarded([&] {
        const int count = LengthOf(text, length);
        const auto* const how = ObjectOf<StringFormatObject>(format);
        const Layout lines = LayOut(text, count, *ObjectOf<FontObject>(font), *layout, how ? how->flags : 0);
        *bounds = RectF(layout->X, layout->Y, static_cast<REAL>(lines.width),
                        static_cast<REAL>(count == 0 ? 0 : lines.height * static_cast<double>(lines.lines.size())));
        if (charactersFitted) {
            *charactersFitted = count;
        }
        if (linesFilled) {
            *linesFilled = static_cast<INT>(lines.lines.size());
        }
        return Ok;
    });
}

GpStatus GdipDrawString(GpGraphics* graphics, const WCHAR* text, INT length, const GpFont* font, const RectF* layout,
                        const GpStringFormat* format, const GpBrush* brush) {
    if (!graphics || !text || !font || !layout || !brush || !IsSane(*layout) || LengthOf(text, length) < 0) {
        return InvalidParameter;
    }
    return Guarded([&] {
        auto& object = *ObjectOf<GraphicsObject>(graphics);
        const FontObject& face = *ObjectOf<FontObject>(font);
        const StringFormatObject usual;
        const StringFormatObject& how = format ? *ObjectOf<StringFormatObject>(format) : usual;
        const cairo_matrix_t& world = object.state.world;
        const double largest =
            face.pixels * std::max({std::abs(world.xx), std::abs(world.xy), std::abs(world.yx), std::abs(world.yy)});
        const double area = std::abs(world.xx * world.yy - world.xy * world.yx);
        if (!(largest < 10000) || !(area > 1e-9)) {
            return Ok;   // larger than any target, or edge-on
        }
        const Layout lines = LayOut(text, LengthOf(text, length), face, *layout, how.flags);
        const bool isSmooth = object.state.text != TextRenderingHintSingleBitPerPixel &&
                              object.state.text != TextRenderingHintSingleBitPerPixelGridFit;
        return object.DrawCovered(*BrushOf(brush), isSmooth, [&](cairo_t* cairo, const cairo_matrix_t& matrix) {
            if (layout->Width > 0 && layout->Height > 0 && (how.flags & StringFormatFlagsNoClip) == 0) {
                Outline frame;
                frame.AddRectangle({layout->X, layout->Y}, layout->Width, layout->Height);
                frame.AppendTo(cairo, matrix);
                cairo_clip(cairo);
            }
            cairo_set_matrix(cairo, &matrix);
            const double factor = SelectFont(cairo, face);
            cairo_font_options_t* const options = cairo_font_options_create();
            cairo_font_options_set_antialias(options, isSmooth ? CAIRO_ANTIALIAS_GRAY : CAIRO_ANTIALIAS_NONE);
            cairo_set_font_options(cairo, options);
            cairo_font_options_destroy(options);
            double y = lines.Top(*layout, how.lineAlign) + lines.ascent;
            for (const Line& line : lines.lines) {
                const double free = layout->Width - line.width;
                const double x = layout->X + (how.align == StringAlignmentCenter ? free / 2
                                              : how.align == StringAlignmentFar  ? free
                                                                                 : 0);
                cairo_save(cairo);
                cairo_translate(cairo, x, y);
                cairo_scale(cairo, factor, factor);
                cairo_move_to(cairo, 0, 0);
                cairo_show_text(cairo, line.text.c_str());
                cairo_restore(cairo);
                cairo_new_path(cairo);
                const double thickness = std::max(1.0, face.pixels / 20);
                if (face.style & FontStyleUnderline) {
                    cairo_rectangle(cairo, x, y + face.pixels / 10, line.width, thickness);
                }
                if (face.style & FontStyleStrikeout) {
                    cairo_rectangle(cairo, x, y - face.pixels / 4, line.width, thickness);
                }
                cairo_fill(cairo);
                y += lines.height;
            }
        });
    });
}

}   // namespace DllExports

}   // namespace Gdiplus

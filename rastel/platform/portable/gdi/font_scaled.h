// A face at one size and style: advances, outlines and coverage of its glyphs.
#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <unordered_map>

#include "rastel/platform/portable/gdi/font_face.h"
#include "rastel/platform/portable/gdi/glyph_image.h"

#include FT_OUTLINE_H

namespace rastel::platform {

enum class Smoothing { Grey, Mono };

struct FaceScale {
    int emX64 = 0;   // width and height of the em in 1/64 pixel
    int emY64 = 0;
    bool embolden = false;   // styles that the file lacks
    bool slant = false;
    int angle = 0;   // counter-clockwise, tenths of a degree, 0 to 3599
    Smoothing smoothing = Smoothing::Grey;

    auto operator<=>(const FaceScale&) const = default;
};

// Pixels round the pen, y upwards, right and top outside.
struct GlyphBox {
    std::int64_t left = 0;
    std::int64_t bottom = 0;
    std::int64_t right = 0;
    std::int64_t top = 0;
};

// Not for several threads at once.
class ScaledFace {
public:
    static std::shared_ptr<ScaledFace> Create(std::shared_ptr<FontFace> face, const FaceScale& scale);   // or null
    ~ScaledFace();
    ScaledFace(const ScaledFace&) = delete;
    ScaledFace& operator=(const ScaledFace&) = delete;

    const FontFace& Face() const { return *face_; }
    unsigned long Id() const { return id_; }   // never used again for another one

    int Advance(unsigned glyph);   // whole pixels along the line, the same at every angle

    // The outline in 1/64 pixel round the pen, with style and angle, y upwards; valid until the next call on this
    // face. Null: the glyph has none.
    FT_Outline* Outline(unsigned glyph);

    // Coverage of a glyph. One too large to keep whole is drawn inside `needed` only, and `whole` says so.
    struct Drawn {
        GlyphImage image;
        bool whole = true;
    };
    Drawn Draw(unsigned glyph, const GlyphBox& needed);

private:
    ScaledFace(std::shared_ptr<FontFace> face, const FaceScale& scale);
    bool Load(unsigned glyph, FT_Int32 flags);
    FT_Int32 HintFlags() const;
    FT_Pos Emboldening() const;

    std::shared_ptr<FontFace> face_;
    FaceScale scale_;
    FT_Size size_ = nullptr;
    unsigned long id_;
    std::unordered_map<unsigned, int> advances_;
};

// Coverage of an outline in 1/64 pixel inside `box`; empty on failure. The outline is moved.
GlyphImage DrawOutline(FT_Library library, FT_Outline& outline, const GlyphBox& box, Smoothing smoothing);

// The pixels an outline touches.
GlyphBox BoxOf(const FT_Outline& outline);

// What both have; empty boxes come out with left >= right or bottom >= top.
GlyphBox CommonPart(const GlyphBox& first, const GlyphBox& second);

}   // namespace rastel::platform

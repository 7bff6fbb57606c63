#include "rastel/platform/portable/gdi/font_scaled.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

#include FT_SIZES_H

namespace rastel::platform {

namespace {

// Hinting fits stems to pixels; where a stem is many pixels wide it changes nothing worth its time.
constexpr int kLargestHintedEm64 = 256 * 64;
// Larger glyphs are drawn where they show, each time anew, so that one letter never costs megabytes.
constexpr std::int64_t kLargestWholeArea = 512 * 512;
constexpr FT_Fixed kSlant = 0x0366A;   // tan 12 degrees, as 16.16

unsigned long NextId() {
    static std::atomic<unsigned long> next{1};
    return next++;
}

FT_Matrix Rotation(int angle) {
    const double radians = angle * std::numbers::pi / 1800.0;
    const auto cosine = static_cast<FT_Fixed>(std::lround(std::cos(radians) * 65536.0));
    const auto sine = static_cast<FT_Fixed>(std::lround(std::sin(radians) * 65536.0));
    return FT_Matrix{cosine, -sine, sine, cosine};
}

}   // namespace

std::shared_ptr<ScaledFace> ScaledFace::Create(std::shared_ptr<FontFace> face, const FaceScale& scale) {
    if (!face) {
        return nullptr;
    }
    std::shared_ptr<ScaledFace> scaled(new ScaledFace(std::move(face), scale));
    if (FT_New_Size(scaled->face_->Handle(), &scaled->size_) != 0) {
        scaled->size_ = nullptr;
        return nullptr;
    }
    if (FT_Activate_Size(scaled->size_) != 0 ||
        FT_Set_Char_Size(scaled->face_->Handle(), scale.emX64, scale.emY64, 72, 72) != 0) {
        return nullptr;
    }
    return scaled;
}

ScaledFace::ScaledFace(std::shared_ptr<FontFace> face, const FaceScale& scale)
    : face_(std::move(face)), scale_(scale), id_(NextId()) {}

ScaledFace::~ScaledFace() {
    if (size_) {
        FT_Done_Size(size_);
    }
}

FT_Int32 ScaledFace::HintFlags() const {
    const Hinting hinting = face_->File().hinting;
    if (std::max(scale_.emX64, scale_.emY64) > kLargestHintedEm64) {
        return FT_LOAD_NO_HINTING;
    }
    const FT_Int32 automatic = hinting == Hinting::Auto ? FT_LOAD_FORCE_AUTOHINT : 0;
    if (scale_.smoothing == Smoothing::Mono) {
        return FT_LOAD_TARGET_MONO | automatic;
    }
    switch (hinting) {
        case Hinting::None:
            return FT_LOAD_NO_HINTING;
        case Hinting::Light:
            return FT_LOAD_TARGET_LIGHT;
        case Hinting::Normal:
        case Hinting::Auto:
            break;
    }
    return FT_LOAD_TARGET_NORMAL | automatic;
}

FT_Pos ScaledFace::Emboldening() const {
    // A whole number of pixels, so that advances stay whole and stems sharp.
    return std::max<FT_Pos>(64, (scale_.emX64 / 24 + 32) & ~63);
}

bool ScaledFace::Load(unsigned glyph, FT_Int32 flags) {
    return FT_Activate_Size(size_) == 0 && FT_Load_Glyph(face_->Handle(), glyph, flags | FT_LOAD_NO_BITMAP) == 0;
}

int ScaledFace::Advance(unsigned glyph) {
    if (const auto known = advances_.find(glyph); known != advances_.end()) {
        return known->second;
    }
    int advance = 0;
    if (Load(glyph, HintFlags())) {
        FT_Pos pixels = (face_->Handle()->glyph->advance.x + 32) >> 6;
        if (scale_.embolden && pixels > 0) {
            pixels += Emboldening() >> 6;
        }
        advance = static_cast<int>(std::clamp<FT_Pos>(pixels, 0, std::numeric_limits<short>::max() * 16));
    }
    advances_.emplace(glyph, advance);
    return advance;
}

FT_Outline* ScaledFace::Outline(unsigned glyph) {
    // A turned stem has no pixel column to be fitted to.
    if (!Load(glyph, scale_.angle ? FT_LOAD_NO_HINTING : HintFlags())) {
        return nullptr;
    }
    FT_GlyphSlot slot = face_->Handle()->glyph;
    if (slot->format != FT_GLYPH_FORMAT_OUTLINE || slot->outline.n_points <= 0) {
        return nullptr;
    }
    if (scale_.embolden) {
        FT_Outline_EmboldenXY(&slot->outline, Emboldening(), 0);
    }
    if (scale_.slant) {
        const FT_Matrix shear{0x10000, kSlant, 0, 0x10000};
        FT_Outline_Transform(&slot->outline, &shear);
    }
    if (scale_.angle) {
        const FT_Matrix turn = Rotation(scale_.angle);
        FT_Outline_Transform(&slot->outline, &turn);
    }
    return &slot->outline;
}

ScaledFace::Drawn ScaledFace::Draw(unsigned glyph, const GlyphBox& needed) {
    FT_Outline* outline = Outline(glyph);
    if (!outline) {
        return {};
    }
    GlyphBox box = BoxOf(*outline);
    Drawn drawn;
    drawn.whole = (box.right - box.left) * (box.top - box.bottom) <= kLargestWholeArea;
    if (!drawn.whole) {
        box = CommonPart(box, needed);
    }
    drawn.image = DrawOutline(face_->Handle()->glyph->library, *outline, box, scale_.smoothing);
    return drawn;
}

GlyphBox BoxOf(const FT_Outline& outline) {
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    return GlyphBox{box.xMin >> 6, box.yMin >> 6, (box.xMax + 63) >> 6, (box.yMax + 63) >> 6};
}

GlyphBox CommonPart(const GlyphBox& first, const GlyphBox& second) {
    return GlyphBox{std::max(first.left, second.left), std::max(first.bottom, second.bottom),
                    std::min(first.right, second.right), std::min(first.top, second.top)};
}

GlyphImage DrawOutline(FT_Library library, FT_Outline& outline, const GlyphBox& box, Smoothing smoothing) {
    const std::int64_t width = box.right - box.left;
    const std::int64_t height = box.top - box.bottom;
    constexpr std::int64_t kLargestSide = 0x7FFF;
    if (width <= 0 || height <= 0 || width > kLargestSide || height > kLargestSide) {
        return {};
    }
    GlyphImage image;
    image.left = static_cast<int>(box.left);
    image.top = static_cast<int>(box.top);
    image.width = static_cast<int>(width);
    image.height = static_cast<int>(height);

    FT_Outline_Translate(&outline, static_cast<FT_Pos>(-box.left * 64), static_cast<FT_Pos>(-box.bottom * 64));
    const bool mono = smoothing == Smoothing::Mono;
    const std::size_t pitch = static_cast<std::size_t>(mono ? (width + 7) / 8 : width);
    std::vector<unsigned char> rows(pitch * static_cast<std::size_t>(height));
    FT_Bitmap bitmap = {};
    bitmap.rows = static_cast<unsigned>(height);
    bitmap.width = static_cast<unsigned>(width);
    bitmap.pitch = static_cast<int>(pitch);
    bitmap.buffer = rows.data();
    bitmap.num_grays = 256;
    bitmap.pixel_mode = mono ? FT_PIXEL_MODE_MONO : FT_PIXEL_MODE_GRAY;
    if (FT_Outline_Get_Bitmap(library, &outline, &bitmap) != 0) {
        return {};
    }
    if (!mono) {
        image.coverage = std::move(rows);
        return image;
    }
    image.coverage.resize(static_cast<std::size_t>(width * height));
    for (std::size_t y = 0; y < static_cast<std::size_t>(height); y++) {
        for (std::size_t x = 0; x < static_cast<std::size_t>(width); x++) {
            const bool set = (rows[y * pitch + x / 8] >> (7 - x % 8)) & 1;
            image.coverage[y * static_cast<std::size_t>(width) + x] = set ? 255 : 0;
        }
    }
    return image;
}

}   // namespace rastel::platform

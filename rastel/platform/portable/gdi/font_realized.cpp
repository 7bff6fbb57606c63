#include "rastel/platform/portable/gdi/font_realized.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "rastel/platform/portable/gdi/font_engine.h"

namespace rastel::platform {

namespace {

constexpr int kDefaultEm = 12;
// Coordinates of outlines this large still fit the rasteriser with room to spare.
constexpr int kLargestEm = 16000;
constexpr std::size_t kMostKnownCharacters = 16384;
constexpr std::size_t kMostStandIns = 16;

std::int64_t Magnitude(LONG value) {
    return std::abs(static_cast<std::int64_t>(value));
}

int ToPixels(std::int64_t design, std::int64_t em64, std::int64_t unitsPerEm) {
    const std::int64_t doubled = 2 * design * em64;
    const std::int64_t divisor = unitsPerEm * 64;
    // Half a pixel is added before the division that rounds down.
    const std::int64_t numerator = doubled + divisor;
    const std::int64_t quotient = numerator / (2 * divisor);
    return static_cast<int>(numerator < 0 && numerator % (2 * divisor) != 0 ? quotient - 1 : quotient);
}

int NormalizedAngle(LONG tenths) {
    return static_cast<int>(((tenths % 3600) + 3600) % 3600);
}

}   // namespace

std::shared_ptr<RealizedFont> RealizedFont::Create(FontEngine& engine, const LOGFONTW& wanted) {
    std::shared_ptr<RealizedFont> font(new RealizedFont(engine, wanted));
    return font->Realize() ? font : nullptr;
}

bool RealizedFont::Realize() {
    // A context of the compatible kind turns line and letters together, by the angle of the line.
    angle_ = NormalizedAngle(wanted_.lfEscapement);

    std::shared_ptr<FontFace> face;
    if (const auto best = engine_.Matcher().Best(wanted_)) {
        face = engine_.OpenFace(*best);
    }
    if (!face) {
        candidates_ = engine_.Matcher().All(wanted_);
        candidatesListed_ = true;
        for (int i = 0; candidates_ && i < candidates_->Count() && !face; i++) {
            if (const auto file = candidates_->File(i)) {
                face = engine_.OpenFace(*file);
            }
        }
    }
    if (!face) {
        return false;
    }

    const DesignMetrics& design = face->Design();
    std::int64_t em = kDefaultEm;
    if (wanted_.lfHeight < 0) {
        em = Magnitude(wanted_.lfHeight);
    } else if (wanted_.lfHeight > 0) {
        const std::int64_t cell = design.ascent + design.descent;
        em = (Magnitude(wanted_.lfHeight) * design.unitsPerEm + cell / 2) / cell;
    }
    emY64_ = static_cast<int>(std::clamp<std::int64_t>(em, 1, kLargestEm)) * 64;
    emX64_ = emY64_;
    if (wanted_.lfWidth != 0) {
        const std::int64_t width64 = Magnitude(wanted_.lfWidth) * 64 * design.unitsPerEm / design.averageWidth;
        emX64_ = static_cast<int>(std::clamp<std::int64_t>(width64, 64, kLargestEm * 64));
    }
    main_ = Scale(face->File());
    if (!main_) {
        return false;
    }
    Measure();
    return true;
}

std::shared_ptr<ScaledFace> RealizedFont::Scale(const FontFile& file) {
    FaceScale scale;
    scale.emX64 = emX64_;
    scale.emY64 = emY64_;
    scale.embolden = wanted_.lfWeight >= FW_SEMIBOLD && file.weight < FW_SEMIBOLD;
    scale.slant = wanted_.lfItalic && !file.slanted;
    scale.angle = angle_;
    scale.smoothing = wanted_.lfQuality == NONANTIALIASED_QUALITY ? Smoothing::Mono : Smoothing::Grey;
    return engine_.ScaleFace(file, scale);
}

void RealizedFont::Measure() {
    const DesignMetrics& design = Design();
    const auto across = [&](int value) { return ToPixels(value, emX64_, design.unitsPerEm); };
    const auto along = [&](int value) { return ToPixels(value, emY64_, design.unitsPerEm); };

    metrics_.emHeight = emY64_ / 64;
    metrics_.ascent = along(design.ascent);
    metrics_.descent = along(design.descent);
    if (wanted_.lfHeight > 0 && emY64_ < kLargestEm * 64) {
        // The cell was asked for, so rounding must not make it a pixel taller or lower.
        metrics_.ascent = std::min<int>(metrics_.ascent, wanted_.lfHeight);
        metrics_.descent = wanted_.lfHeight - metrics_.ascent;
    }
    metrics_.height = metrics_.ascent + metrics_.descent;
    metrics_.externalLeading = along(design.lineGap);
    metrics_.averageWidth = std::max(1, across(design.averageWidth));
    metrics_.maximumWidth = std::max(metrics_.averageWidth, across(design.maximumWidth));
    metrics_.underlineThickness = std::max(1, along(design.underlineThickness));
    // Small letters must not stand on their underline, whatever rounding makes of the gap.
    metrics_.underlineTop = std::min(along(design.underlineTop), metrics_.descent > 1 ? -1 : 0);
    metrics_.strikeOutThickness = std::max(1, along(design.strikeOutThickness));
    metrics_.strikeOutTop = along(design.strikeOutTop);
    const bool emboldened = wanted_.lfWeight >= FW_SEMIBOLD && design.weight < FW_SEMIBOLD;
    metrics_.weight = emboldened ? FW_BOLD : design.weight;
    metrics_.slanted = wanted_.lfItalic || main_->Face().File().slanted;
}

FontGlyph RealizedFont::Find(char32_t character) {
    if (const auto known = known_.find(character); known != known_.end()) {
        return known->second;
    }
    FontGlyph found{main_.get(), main_->Face().GlyphIndex(character), 0};
    // Control characters have no shape that another font could lend.
    const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
    if (found.glyph == 0 && !control) {
        found = FindElsewhere(character);
    }
    found.advance = found.face->Advance(found.glyph);
    if (known_.size() >= kMostKnownCharacters) {
        known_.clear();
    }
    known_.emplace(character, found);
    return found;
}

FontGlyph RealizedFont::FindElsewhere(char32_t character) {
    if (!candidatesListed_) {
        candidates_ = engine_.Matcher().All(wanted_);
        candidatesListed_ = true;
    }
    for (int i = 0; candidates_ && i < candidates_->Count(); i++) {
        if (!candidates_->HasCharacter(i, character)) {
            continue;
        }
        auto standIn = standIns_.find(i);
        if (standIn == standIns_.end()) {
            if (standIns_.size() >= kMostStandIns) {
                break;   // a text in more scripts than this is a file of noise; its rest shows as boxes
            }
            const auto file = candidates_->File(i);
            standIn = standIns_.emplace(i, file ? Scale(*file) : nullptr).first;
        }
        if (!standIn->second) {
            continue;
        }
        if (const unsigned glyph = standIn->second->Face().GlyphIndex(character)) {
            return FontGlyph{standIn->second.get(), glyph, 0};
        }
    }
    return FontGlyph{main_.get(), 0, 0};
}

}   // namespace rastel::platform

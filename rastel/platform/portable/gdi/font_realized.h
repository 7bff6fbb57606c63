// A wanted font made real: the face that serves it, its measures in pixels, and stand-ins for characters it lacks.
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "rastel/platform/portable/gdi/font_scaled.h"

namespace rastel::platform {

class FontEngine;

// Pixels. Upper edges of lines are measured upwards from the baseline.
struct FontMetrics {
    int height = 0;   // ascent + descent
    int ascent = 0;
    int descent = 0;
    int emHeight = 0;
    int externalLeading = 0;
    int averageWidth = 0;
    int maximumWidth = 0;
    int underlineTop = 0;
    int underlineThickness = 1;
    int strikeOutTop = 0;
    int strikeOutThickness = 1;
    int weight = 0;
    bool slanted = false;
};

struct FontGlyph {
    ScaledFace* face = nullptr;   // lives as long as the font
    unsigned glyph = 0;
    int advance = 0;
};

// Not for several threads at once; belongs to the engine that made it.
class RealizedFont {
public:
    static std::shared_ptr<RealizedFont> Create(FontEngine& engine, const LOGFONTW& wanted);   // null: no font at all

    const LOGFONTW& Wanted() const { return wanted_; }
    const FontMetrics& Metrics() const { return metrics_; }
    const FontFace& Face() const { return main_->Face(); }
    const DesignMetrics& Design() const { return main_->Face().Design(); }
    int Angle() const { return angle_; }   // of the line, counter-clockwise, tenths of a degree, 0 to 3599

    // The glyph of the font itself, else of another font that has one, else the font's box for missing characters.
    FontGlyph Find(char32_t character);

private:
    RealizedFont(FontEngine& engine, const LOGFONTW& wanted) : engine_(engine), wanted_(wanted) {}
    bool Realize();
    void Measure();
    std::shared_ptr<ScaledFace> Scale(const FontFile& file);
    FontGlyph FindElsewhere(char32_t character);

    FontEngine& engine_;
    LOGFONTW wanted_;
    int angle_ = 0;
    int emX64_ = 0;
    int emY64_ = 0;
    FontMetrics metrics_;
    std::shared_ptr<ScaledFace> main_;
    std::unique_ptr<FontCandidates> candidates_;   // listed when first needed
    bool candidatesListed_ = false;
    std::unordered_map<int, std::shared_ptr<ScaledFace>> standIns_;   // by index of the candidate; null: unusable
    std::unordered_map<char32_t, FontGlyph> known_;
};

}   // namespace rastel::platform

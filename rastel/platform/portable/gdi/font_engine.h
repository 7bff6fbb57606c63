// What all fonts of the process share: FreeType, the search for files, opened faces, and drawn glyphs.
//
// One lock guards everything; whoever holds an EngineLock may use the engine and the fonts it made. Glyph images are
// shared and constant, and stay usable after the lock is gone.
#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <tuple>
#include <utility>

#include "rastel/platform/portable/gdi/font_cache.h"
#include "rastel/platform/portable/gdi/font_match.h"
#include "rastel/platform/portable/gdi/font_realized.h"
#include "rastel/platform/portable/gdi/font_scaled.h"
#include "rastel/platform/portable/gdi/glyph_cache.h"

namespace rastel::platform {

class FontEngine {
public:
    FontEngine(const FontEngine&) = delete;
    FontEngine& operator=(const FontEngine&) = delete;

    std::shared_ptr<RealizedFont> Realize(const LOGFONTW& wanted);   // null: no font at all, or the process ends
    std::shared_ptr<FontFace> OpenFace(const FontFile& file);        // null: not a usable font file
    std::shared_ptr<ScaledFace> ScaleFace(const FontFile& file, const FaceScale& scale);
    FontMatcher& Matcher() { return *matcher_; }
    GlyphCache& Glyphs() { return glyphs_; }
    FT_Library Library() const { return library_; }   // null where FreeType did not start

    bool AddFile(const std::string& path);
    void RemoveAddedFiles();
    void UseSystemFonts(bool use);

private:
    friend class EngineLock;
    FontEngine();
    static FontEngine& Instance();
    void ForgetFonts();
    void Close();

    using FaceKey = std::tuple<std::string, int, Hinting>;
    using ScaledKey = std::pair<FaceKey, FaceScale>;

    std::mutex mutex_;
    FT_Library library_ = nullptr;
    std::unique_ptr<FontMatcher> matcher_;
    FontCache<FaceKey, std::shared_ptr<FontFace>> faces_;
    FontCache<ScaledKey, std::shared_ptr<ScaledFace>> scaledFaces_;
    FontCache<std::wstring, std::shared_ptr<RealizedFont>> fonts_;
    GlyphCache glyphs_;
};

class EngineLock {
public:
    EngineLock() : engine_(FontEngine::Instance()), lock_(engine_.mutex_) {}
    FontEngine* operator->() { return &engine_; }
    FontEngine& operator*() { return engine_; }

private:
    FontEngine& engine_;
    std::lock_guard<std::mutex> lock_;
};

}   // namespace rastel::platform

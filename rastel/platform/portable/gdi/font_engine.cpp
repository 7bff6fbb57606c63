#include "rastel/platform/portable/gdi/font_engine.h"

#include <algorithm>
#include <iterator>

#include "rastel/platform/portable/gdi/font_files.h"
#include "rastel/platform/portable/gdi/known_letters.h"

namespace rastel::platform {

namespace {

constexpr std::size_t kOpenFaces = 32;
constexpr std::size_t kScaledFaces = 64;
constexpr std::size_t kFonts = 64;

// All that tells two wanted fonts apart, as one ordered value.
std::wstring KeyOf(const LOGFONTW& wanted) {
    std::wstring key;
    for (const LONG number : {wanted.lfHeight, wanted.lfWidth, wanted.lfEscapement, wanted.lfWeight,
                              static_cast<LONG>(wanted.lfItalic != 0), static_cast<LONG>(wanted.lfUnderline != 0),
                              static_cast<LONG>(wanted.lfStrikeOut != 0), static_cast<LONG>(wanted.lfCharSet),
                              static_cast<LONG>(wanted.lfQuality), static_cast<LONG>(wanted.lfPitchAndFamily)}) {
        key += std::to_wstring(number);
        key += L' ';
    }
    const WCHAR* end = std::find(std::begin(wanted.lfFaceName), std::end(wanted.lfFaceName), L'\0');
    key.append(std::begin(wanted.lfFaceName), end);
    return key;
}

}   // namespace

// The engine itself is never destroyed, since other static objects may draw text until the very end of the process;
// what it holds is given back before, and they then find no font.
FontEngine& FontEngine::Instance() {
    struct Closer {
        FontEngine* engine;
        ~Closer() { engine->Close(); }
    };
    static FontEngine* const engine = new FontEngine;
    static const Closer closer{engine};
    return *engine;
}

void FontEngine::Close() {
    const std::lock_guard<std::mutex> lock(mutex_);
    ForgetFonts();
    matcher_.reset();
    if (library_) {
        FT_Done_FreeType(library_);
        library_ = nullptr;
    }
}

FontEngine::FontEngine() : faces_(kOpenFaces), scaledFaces_(kScaledFaces), fonts_(kFonts) {
    if (FT_Init_FreeType(&library_) != 0) {
        library_ = nullptr;
    }
    matcher_ = std::make_unique<FontMatcher>();
}

std::shared_ptr<RealizedFont> FontEngine::Realize(const LOGFONTW& wanted) {
    if (!matcher_) {
        return nullptr;
    }
    const std::wstring key = KeyOf(wanted);
    if (auto known = fonts_.Find(key)) {
        return known;
    }
    auto font = RealizedFont::Create(*this, wanted);
    if (font) {
        fonts_.Insert(key, font, 1);
    }
    return font;
}

std::shared_ptr<FontFace> FontEngine::OpenFace(const FontFile& file) {
    if (!library_) {
        return nullptr;
    }
    // The same file can be hinted differently for different wishes.
    const FaceKey key(file.path, file.faceIndex, file.hinting);
    if (auto known = faces_.Find(key)) {
        return known;
    }
    auto face = FontFace::Open(library_, file);
    if (face) {
        faces_.Insert(key, face, 1);
    }
    return face;
}

std::shared_ptr<ScaledFace> FontEngine::ScaleFace(const FontFile& file, const FaceScale& scale) {
    const ScaledKey key(FaceKey(file.path, file.faceIndex, file.hinting), scale);
    if (auto known = scaledFaces_.Find(key)) {
        return known;
    }
    auto scaled = ScaledFace::Create(OpenFace(file), scale);
    if (scaled) {
        scaledFaces_.Insert(key, scaled, 1);
    }
    return scaled;
}

bool FontEngine::AddFile(const std::string& path) {
    FontFile file;
    file.path = path;
    // Fontconfig takes any readable file; only a font that opens shall count.
    if (!library_ || !matcher_ || !FontFace::Open(library_, file) || !matcher_->AddFile(path)) {
        return false;
    }
    ForgetFonts();
    return true;
}

void FontEngine::RemoveAddedFiles() {
    if (matcher_) {
        ForgetFonts();
        matcher_->RemoveAddedFiles();
    }
}

void FontEngine::UseSystemFonts(bool use) {
    if (matcher_) {
        ForgetFonts();
        matcher_->UseSystemFonts(use);
    }
}

void FontEngine::ForgetFonts() {
    KnownLetters::ForgetAll();
    fonts_.Clear();
    scaledFaces_.Clear();
    faces_.Clear();
    glyphs_.Clear();
}

bool AddFontFile(const std::string& path) {
    EngineLock engine;
    return engine->AddFile(path);
}

void RemoveAddedFontFiles() {
    EngineLock engine;
    engine->RemoveAddedFiles();
}

void UseSystemFonts(bool use) {
    EngineLock engine;
    engine->UseSystemFonts(use);
}

unsigned long long DrawnGlyphCount() {
    EngineLock engine;
    return engine->Glyphs().DrawnCount();
}

}   // namespace rastel::platform

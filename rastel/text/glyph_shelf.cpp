#include "rastel/text/glyph_shelf.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace rastel::text {

namespace {
constexpr std::size_t kCapacityBytes = 4 << 20;
constexpr std::size_t kMostCharacters = 16384;
}   // namespace

bool GlyphShelf::IsSame(const Identity& first, const Identity& second) {
    const TEXTMETRICW& a = first.metrics;
    const TEXTMETRICW& b = second.metrics;
    return std::memcmp(&first.font, &second.font, sizeof(LOGFONTW)) == 0 && a.tmHeight == b.tmHeight &&
           a.tmAscent == b.tmAscent && a.tmInternalLeading == b.tmInternalLeading &&
           a.tmAveCharWidth == b.tmAveCharWidth && a.tmMaxCharWidth == b.tmMaxCharWidth && a.tmWeight == b.tmWeight &&
           a.tmItalic == b.tmItalic && a.tmPitchAndFamily == b.tmPitchAndFamily && a.tmCharSet == b.tmCharSet;
}

void GlyphShelf::Refresh(HDC hDC) {
    Identity now;
    const HGDIOBJ font = ::GetCurrentObject(hDC, OBJ_FONT);
    const bool isTold =
        font && ::GetObjectW(font, sizeof(now.font), &now.font) > 0 && ::GetTextMetricsW(hDC, &now.metrics);
    // Units behind the terminator of a name mean nothing.
    LPWSTR end = std::find(std::begin(now.font.lfFaceName), std::end(now.font.lfFaceName), L'\0');
    std::fill(end, std::end(now.font.lfFaceName), L'\0');
    if (!isTold || !isKnown_ || !IsSame(now, identity_) || bytes_ > kCapacityBytes ||
        others_.size() > kMostCharacters) {
        Forget();
    }
    identity_ = now;
    isKnown_ = isTold;
}

void GlyphShelf::Forget() {
    for (auto& glyph : latin_) {
        glyph.reset();
    }
    others_.clear();
    bytes_ = 0;
}

Glyph& GlyphShelf::At(unsigned character) {
    if (character >= latin_.size()) {
        return others_[character];
    }
    auto& glyph = latin_[character];
    if (!glyph) {
        glyph = std::make_unique<Glyph>();
    }
    return *glyph;
}

const std::vector<int>& GlyphShelf::Extents(HDC hDC, const wchar_t* text, int length) {
    extents_.assign(static_cast<std::size_t>(length) + 1, 0);
    SIZE size;
    // One measure for all beginnings: one for each would make long lines slow.
    if (length > 0 && !::GetTextExtentExPointW(hDC, text, length, 0, nullptr, extents_.data() + 1, &size)) {
        std::fill(extents_.begin(), extents_.end(), 0);
    }
    return extents_;
}

}   // namespace rastel::text

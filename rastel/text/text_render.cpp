#include "rastel/text/text_render.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

#include "rastel/alpha/alpha_channel.h"
#include "rastel/composite/adv_surface.h"
#include "rastel/display/display_manager.h"
#include "rastel/platform/kernel.h"
#include "rastel/platform/user.h"
#include "rastel/surface/kernels.h"
#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/surface.h"
#include "rastel/text/glyph_shelf.h"
#include "rastel/text/text_contexts.h"

using rastel::PixelLock;
using rastel::kernels::Rows;
using rastel::text::Glyph;
using rastel::text::GlyphShelf;
using rastel::text::TextContexts;

namespace {

constexpr int topLevel = 64;   // of GGO_GRAY8_BITMAP
constexpr std::int64_t noCharacter = -1;
constexpr MAT2 identity = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};

// Where the same character twice in a row is fetched once. So it has always been on this line of systems, and on a
// target with a plane it shows: the second comes out of a mask that the first left two-valued.
bool ReusesLastGlyph() {
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof(version);
    if (!::GetVersionExW(&version) || version.dwPlatformId != VER_PLATFORM_WIN32_WINDOWS) {
        return false;
    }
    const DWORD major = version.dwMajorVersion;
    return major > 4 || ((major == 3 || major == 4) && version.dwMinorVersion >= 10);
}

int Sum(std::int64_t first, std::int64_t second) {
    return static_cast<int>(
        std::clamp<std::int64_t>(first + second, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

bool IsPair(const wchar_t* text, int length) {
    return length > 1 && text[0] >= 0xD800 && text[0] <= 0xDBFF && text[1] >= 0xDC00 && text[1] <= 0xDFFF;
}

// The character of a surrogate pair, where GDI takes such; 0: it doesn't.
unsigned CharacterOfPair(const wchar_t* text) {
    if constexpr (sizeof(wchar_t) > 2) {
        return 0x10000 + ((static_cast<unsigned>(text[0]) - 0xD800) << 10) + (static_cast<unsigned>(text[1]) - 0xDC00);
    } else {
        return 0;
    }
}

// Turns the buffer of GetGlyphOutlineW into alpha; never reads past it, whatever the metrics claim.
void TakeAlpha(Glyph& glyph, const BYTE* buffer, int bufferSize, const BYTE* table) {
    const std::int64_t width = glyph.metrics.gmBlackBoxX;
    const std::int64_t pitch = (width * 8 + 31) / 32 * 4;
    const std::int64_t rows = pitch > 0 ? std::min<std::int64_t>(glyph.metrics.gmBlackBoxY, bufferSize / pitch) : 0;
    glyph.width = rows > 0 ? static_cast<int>(width) : 0;
    glyph.height = static_cast<int>(rows);
    glyph.alpha.resize(static_cast<std::size_t>(width * rows));
    BYTE* alpha = glyph.alpha.data();
    for (std::int64_t y = 0; y < rows; ++y) {
        const BYTE* const row = buffer + y * pitch;
        for (std::int64_t x = 0; x < width; ++x) {
            *alpha++ = table[row[x]];
        }
    }
}

}   // namespace

struct CTextRender::Line {
    CAdvSurface& target;
    CRect clip;
    int y;   // of the baseline
    bool reusesLast;
    std::int64_t last = noCharacter;   // whose coverage the mask holds
    Glyph lastGlyph{};                 // its metrics
    TextContexts contexts;
};

CTextRender::CTextRender() {
    for (int level = 0; level <= topLevel; ++level) {
        m_CoverageTable[level] = static_cast<BYTE>(level * 255 / (topLevel + 1));
    }
}

CTextRender::~CTextRender() {
    CTextRender::Destroy();
    // A font that was handed over and never used.
    if (m_hFont && m_bDeleteFont) {
        ::DeleteObject(m_hFont);
    }
}

void CTextRender::Destroy() {
    delete m_pShelf;
    m_pShelf = nullptr;
    delete[] m_pGlyphBuffer;
    m_pGlyphBuffer = nullptr;
    m_nGlyphBufferSize = 0;
    if (m_pGlyphMask) {
        m_pGlyphMask->Release();
        m_pGlyphMask = nullptr;
    }
    if (m_pTempSurface) {
        m_pTempSurface->Release();
        m_pTempSurface = nullptr;
    }
    if (!m_hDC) {
        return;
    }
    if (m_hOldFont) {
        ::SelectObject(m_hDC, m_hOldFont);
        m_hOldFont = nullptr;
    }
    if (m_hFont && m_bDeleteFont) {
        ::DeleteObject(m_hFont);
    }
    m_hFont = nullptr;
    m_bDeleteFont = 0;
    ::DeleteDC(m_hDC);
    m_hDC = nullptr;
}

void CTextRender::SetFont(HFONT hFont, int bDeleteFont) {
    if (m_hOldFont) {
        ::SelectObject(m_hDC, m_hOldFont);
        m_hOldFont = nullptr;
    }
    if (m_hFont && m_bDeleteFont && m_hFont != hFont) {
        ::DeleteObject(m_hFont);
    }
    m_hFont = hFont;
    m_bDeleteFont = bDeleteFont;
    if (m_hFont && m_hDC) {
        m_hOldFont = static_cast<HFONT>(::SelectObject(m_hDC, m_hFont));
    }
}

void CTextRender::OpenContext() {
    m_hDC = ::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    if (m_hDC && m_hFont) {
        m_hOldFont = static_cast<HFONT>(::SelectObject(m_hDC, m_hFont));
    }
    ::SetTextAlign(m_hDC, 0);
}

// Of the font that the context has now: a host's own Initilize may not have come here since the last SetFont.
GlyphShelf& CTextRender::Shelf() {
    if (!m_pShelf) {
        m_pShelf = new GlyphShelf;
    }
    m_pShelf->Refresh(m_hDC);
    return *m_pShelf;
}

void CTextRender::Initilize(const wchar_t* text) {
    if (!text) {
        return;
    }
    if (!m_hDC) {
        OpenContext();
    }
    int size = 0;
    UINT width = 0;
    UINT height = 0;
    try {
        GlyphShelf& shelf = Shelf();
        for (; *text; ++text) {
            unsigned character = static_cast<unsigned>(*text);
            if (IsPair(text, 2) && CharacterOfPair(text)) {
                character = CharacterOfPair(text++);
            }
            Glyph& glyph = shelf.At(character);
            if (!glyph.isMeasured) {
                const DWORD bytes =
                    ::GetGlyphOutlineW(m_hDC, character, GGO_GRAY8_BITMAP, &glyph.measured, 0, nullptr, &identity);
                glyph.measuredSize = static_cast<LONG>(bytes);
                glyph.isMeasured = bytes != GDI_ERROR;   // what failed is asked for again
            }
            if (glyph.measuredSize > 0) {
                size = std::max(size, static_cast<int>(glyph.measuredSize));
                width = std::max(width, glyph.measured.gmBlackBoxX);
                height = std::max(height, glyph.measured.gmBlackBoxY);
            }
        }
    } catch (const std::bad_alloc&) {
        return;
    }
    if (size > m_nGlyphBufferSize || !m_pGlyphBuffer) {
        delete[] m_pGlyphBuffer;
        m_pGlyphBuffer = new (std::nothrow) BYTE[static_cast<std::size_t>(size)];
        m_nGlyphBufferSize = m_pGlyphBuffer ? size : 0;
    }
    constexpr UINT most = std::numeric_limits<int>::max();
    if (width == 0 || height == 0 || width > most || height > most) {
        return;
    }
    const int maskWidth = static_cast<int>(width);
    const int maskHeight = static_cast<int>(height);
    if (m_pGlyphMask && maskWidth <= m_pGlyphMask->GetWidth() && maskHeight <= m_pGlyphMask->GetHeight()) {
        return;
    }
    if (m_pGlyphMask) {
        m_pGlyphMask->Release();
        m_pGlyphMask = nullptr;
    }
    if (m_pTempSurface) {
        m_pTempSurface->Release();
        m_pTempSurface = nullptr;
    }
    if (CDisplayManager* const manager = GetDisplayManager()) {
        m_pGlyphMask = manager->CreateAlphaChannel(maskWidth, maskHeight);
    }
}

CAdvSurface* CTextRender::GetTempSurface() {
    CDisplayManager* const manager = GetDisplayManager();
    if (!m_pTempSurface && m_pGlyphMask && manager) {
        m_pTempSurface = manager->CreateAdvSurface(m_pGlyphMask->GetWidth(), m_pGlyphMask->GetHeight(), 1);
    }
    return m_pTempSurface;
}

void CTextRender::Draw(CAdvSurface& target, int x, int y, const wchar_t* text, int length) {
    if (!text) {
        return;
    }
    Initilize(text);
    CRect clip = target.GetRect();
    if (!::IsRectEmpty(&m_rcClip)) {
        ::IntersectRect(&clip, &clip, &m_rcClip);
    }
    OUTLINETEXTMETRICW outline = {};
    outline.otmSize = sizeof(outline);
    ::GetOutlineTextMetricsW(m_hDC, sizeof(outline), &outline);
    const bool isSmooth = outline.otmsUnderscoreSize > 1 && m_pGlyphMask && m_pGlyphBuffer;
    const int whole = ::lstrlenW(text);
    if (length < 0 || length > whole) {
        length = whole;
    }
    try {
        Line line{target, clip, y, ReusesLastGlyph(), noCharacter, {}, {target, clip, m_hFont, m_Color}};
        const std::vector<int>& extents = Shelf().Extents(m_hDC, text, length);
        for (int i = 0, units; i < length; i += units) {
            const bool isPair = IsPair(text + i, length - i);
            units = isPair ? 2 : 1;
            const unsigned character = isPair ? CharacterOfPair(text + i) : static_cast<unsigned>(text[i]);
            const int start = extents[static_cast<std::size_t>(i)];
            const int end = extents[static_cast<std::size_t>(i + units)];
            const int penX = Sum(x, start);
            if (!isSmooth || character == L' ' || character == 0 || !DrawSmooth(line, character, penX)) {
                line.contexts.Write(penX, y, text + i, units);
            } else if (outline.otmTextMetrics.tmUnderlined) {
                const int thickness = outline.otmsUnderscoreSize;
                const int lineY = Sum(thickness / 2 - outline.otmsUnderscorePosition, y);
                line.contexts.Underline(penX, lineY, end - start + 1, thickness);
            }
        }
    } catch (const std::bad_alloc&) {
    }
}

// False: the character has no bitmap.
bool CTextRender::DrawSmooth(Line& line, unsigned character, int penX) {
    if (character == line.last) {
        BlendGlyph(line, line.lastGlyph, penX);
        return true;
    }
    Glyph& glyph = m_pShelf->At(character);
    if (!glyph.isFetched) {
        std::memset(m_pGlyphBuffer, 0, static_cast<std::size_t>(m_nGlyphBufferSize));
        glyph.metrics = {};
        const DWORD bytes = ::GetGlyphOutlineW(m_hDC, character, GGO_GRAY8_BITMAP, &glyph.metrics,
                                               static_cast<DWORD>(m_nGlyphBufferSize), m_pGlyphBuffer, &identity);
        glyph.hasBitmap = bytes != 0;
        if (bytes == GDI_ERROR) {
            glyph.metrics = {};
        }
        TakeAlpha(glyph, m_pGlyphBuffer, m_nGlyphBufferSize, m_CoverageTable);
        glyph.isFetched = bytes != GDI_ERROR;
        m_pShelf->NoteBytes(sizeof(glyph) + glyph.alpha.size());
    }
    if (!glyph.hasBitmap) {
        return false;
    }
    if (line.reusesLast) {
        line.last = character;
        line.lastGlyph.metrics = glyph.metrics;
    }
    FillMask(glyph);
    BlendGlyph(line, glyph, penX);
    return true;
}

void CTextRender::FillMask(const Glyph& glyph) {
    const PixelLock mask(*m_pGlyphMask);
    if (!mask) {
        return;
    }
    const int width = std::min(glyph.width, m_pGlyphMask->GetWidth());
    const int height = std::min(glyph.height, m_pGlyphMask->GetHeight());
    if (width > 0) {
        Rows().copyBytesRect(mask.At(0, 0), mask.Pitch(), glyph.alpha.data(), glyph.width, width, height);
    }
}

void CTextRender::BlendGlyph(Line& line, const Glyph& glyph, int penX) {
    line.contexts.Close();
    const int x = Sum(penX, glyph.metrics.gmptGlyphOrigin.x);
    const int y = Sum(line.y, -static_cast<std::int64_t>(glyph.metrics.gmptGlyphOrigin.y));
    CRect source(0, 0, static_cast<int>(glyph.metrics.gmBlackBoxX), static_cast<int>(glyph.metrics.gmBlackBoxY));
    if (line.target.GetAlphaChannel()) {
        BlendThroughPlane(line.target, x, y, source, line.clip);
    } else if (CSurface* const surface = line.target.GetSurface()) {
        surface->AlphaColorBlt(x, y, m_Color, *m_pGlyphMask, &source, &line.clip);
    }
}

// The colour stays solid under a soft plane, so that edges keep their colour whatever they lie over.
void CTextRender::BlendThroughPlane(CAdvSurface& target, int x, int y, CRect& source, CRect& clip) {
    CAdvSurface* const temp = GetTempSurface();
    if (!temp || !temp->GetAlphaChannel() || !temp->GetSurface()) {
        return;
    }
    temp->GetAlphaChannel()->Fill(nullptr, 0, nullptr);
    temp->GetAlphaChannel()->BltMix(0, 0, *m_pGlyphMask, &source, nullptr);
    m_pGlyphMask->TressHold(1, 0, 255);
    temp->GetSurface()->AlphaColorBlt(0, 0, m_Color, *m_pGlyphMask, &source, nullptr);
    target.Blt(x, y, *temp, nullptr, &clip);
}

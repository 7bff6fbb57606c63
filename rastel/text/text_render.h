// Anti-aliased text on composites: in the colours and, where there is one, in the alpha plane.
//
// Give it a font and a colour, then draw. It keeps a context to measure on and the shapes of the letters it has drawn,
// so that one object for all texts beats one for each. One thread at a time. Nothing is reported: what can't be drawn
// is left out. A CDisplayManager must live while this draws and when it is destroyed.
#pragma once

#include "rastel/platform/framework.h"
#include "rastel/platform/gdi.h"

class CAdvSurface;
class CAlphaChannel;

namespace rastel::text {
class GlyphShelf;
struct Glyph;
}   // namespace rastel::text

class RASTEL_API CTextRender {
public:
    CTextRender();
    CTextRender(const CTextRender&) = delete;
    CTextRender& operator=(const CTextRender&) = delete;

    // The order of the virtual operations is binary interface.
    virtual ~CTextRender();

    // Gives back context, plane and buffers, and the font if it is owned and was in use; colour and clip stay. The
    // object can be used again.
    virtual void Destroy();

    // One line, its pen starting at x on the baseline y. A length below 0, or past the end: up to the terminating null.
    // Letters are blended smoothly; blanks, letters without a shape and all letters of a font whose underline is
    // thinner than two pixels are left to TextOutW.
    virtual void Draw(CAdvSurface& target, int x, int y, const wchar_t* text, int length);

    // Lines that end in a carriage return, with or without line feeds. An empty line ends the drawing. `format` takes
    // the bits of DT_CENTER, DT_RIGHT, DT_VCENTER and DT_BOTTOM. Only SetClipRect cuts, the rectangle does not.
    virtual void DrawTextW(CAdvSurface& target, const wchar_t* text, const CRect& rc, UINT format);

    // Non-zero `bDeleteFont` hands the font over; otherwise it must outlive its use here.
    virtual void SetFont(HFONT hFont, int bDeleteFont);

    // Makes room for every character of the text. The drawing operations call it themselves.
    virtual void Initilize(const wchar_t* text);

    void SetColor(DWORD color) { m_Color = color; }   // 0x00BBGGRR
    void SetClipRect(CRect& rc) { m_rcClip = rc; }    // in the target; empty: no clip
    HDC GetDC() { return m_hDC; }                     // to measure on; null before the first text

protected:
    CAdvSurface* GetTempSurface();   // null: there is no mask, or no memory

    CAlphaChannel* m_pGlyphMask = nullptr;   // the current character, in its top left corner
    CAdvSurface* m_pTempSurface = nullptr;   // of the mask's size when it was made
    BYTE* m_pGlyphBuffer = nullptr;          // what GetGlyphOutlineW writes
    BYTE m_CoverageTable[256] = {};          // from 0 to 64, the levels of GetGlyphOutlineW, to alpha
    int m_nGlyphBufferSize = 0;
    HDC m_hDC = nullptr;
    HFONT m_hFont = nullptr;
    int m_bDeleteFont = 0;
    HFONT m_hOldFont = nullptr;
    DWORD m_Color = 0;
    CRect m_rcClip;

private:
    struct Line;   // what the characters of one Draw have in common

    void OpenContext();
    rastel::text::GlyphShelf& Shelf();   // may throw std::bad_alloc
    void FillMask(const rastel::text::Glyph& glyph);
    void BlendGlyph(Line& line, const rastel::text::Glyph& glyph, int penX);
    void BlendThroughPlane(CAdvSurface& target, int x, int y, CRect& source, CRect& clip);
    bool DrawSmooth(Line& line, unsigned character, int penX);

    rastel::text::GlyphShelf* m_pShelf = nullptr;   // owned; made when first needed
};

// Font handles. A handle only keeps what was asked for; the font itself is made when text is measured or drawn.
#include <memory>
#include <new>

#include "rastel/platform/portable/gdi.h"
#include "rastel/platform/portable/gdi/objects.h"

HFONT CreateFontIndirectW(const LOGFONTW* font) {
    if (!font) {
        return nullptr;
    }
    try {
        auto object = std::make_shared<rastel::platform::FontObject>();
        object->font = *font;
        return static_cast<HFONT>(rastel::platform::AddObject(object));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight, DWORD italic, DWORD underline,
                  DWORD strikeOut, DWORD charSet, DWORD outPrecision, DWORD clipPrecision, DWORD quality,
                  DWORD pitchAndFamily, LPCWSTR faceName) {
    LOGFONTW font = {};
    font.lfHeight = height;
    font.lfWidth = width;
    font.lfEscapement = escapement;
    font.lfOrientation = orientation;
    font.lfWeight = weight;
    font.lfItalic = italic != 0;
    font.lfUnderline = underline != 0;
    font.lfStrikeOut = strikeOut != 0;
    font.lfCharSet = static_cast<BYTE>(charSet);
    font.lfOutPrecision = static_cast<BYTE>(outPrecision);
    font.lfClipPrecision = static_cast<BYTE>(clipPrecision);
    font.lfQuality = static_cast<BYTE>(quality);
    font.lfPitchAndFamily = static_cast<BYTE>(pitchAndFamily);
    // Longer names are cut; the last unit stays null.
    for (int i = 0; faceName && i < LF_FACESIZE - 1 && faceName[i]; i++) {
        font.lfFaceName[i] = faceName[i];
    }
    return CreateFontIndirectW(&font);
}

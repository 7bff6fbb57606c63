#include "rastel/display/palette_map.h"

#include <vector>

#include "rastel/platform/gdi.h"

namespace {

constexpr int mapSize = 512;
unsigned char s_PaletteMap[mapSize] = {};

}   // namespace

const unsigned char* rastel::PaletteMap() {
    return s_PaletteMap;
}

void SetPaletteMap(HDC hDC) {
    std::vector<unsigned char> block(sizeof(LOGPALETTE) + 255 * sizeof(PALETTEENTRY));
    auto* const log = reinterpret_cast<LOGPALETTE*>(block.data());
    log->palVersion = 0x300;
    log->palNumEntries = 256;
    ::GetSystemPaletteEntries(hDC, 0, 256, log->palPalEntry);
    const HPALETTE palette = ::CreatePalette(log);
    for (int i = 0; i < mapSize; ++i) {
        const COLORREF color = RGB((i & 7) << 5, (i >> 3 & 7) << 5, (i >> 6 & 7) << 5);
        s_PaletteMap[i] = static_cast<unsigned char>(::GetNearestPaletteIndex(palette, color));
    }
    ::DeleteObject(palette);
}

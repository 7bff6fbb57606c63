// Packed DIBs out of global memory, packed again, and drawn on by GDI.
#include <cstdint>
#include <cstring>

#include "rastel/image/dib.h"
#include "rastel/platform/gdi.h"
#include "rastel/platform/kernel.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, count);
    if (void* const memory = ::GlobalLock(block)) {
        if (count != 0) {
            std::memcpy(memory, bytes, count);
        }
        ::GlobalUnlock(block);
    }
    winext::CDib image;
    if (image.LoadGlobal(block) && image.GetBits()) {
        ::GlobalFree(image.CreateGlobal());
        const HDC screen = ::CreateCompatibleDC(nullptr);
        const HBITMAP bitmap = ::CreateCompatibleBitmap(screen, 16, 16);
        const HGDIOBJ old = ::SelectObject(screen, bitmap);
        ::StretchDIBits(screen, 0, 0, 16, 16, 0, 0, image.GetWidth(), image.GetHeight(), image.GetBits(),
                        image.GetBitmapInfo(), DIB_RGB_COLORS, SRCCOPY);
        ::SelectObject(screen, old);
        ::DeleteObject(bitmap);
        ::DeleteDC(screen);
    }
    ::GlobalFree(block);
    return 0;
}

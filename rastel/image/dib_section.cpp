#include "rastel/image/dib_section.h"

#include "rastel/platform/gdi.h"

namespace winext {

CDibSection::~CDibSection() {
    CDibSection::Destroy();
}

int CDibSection::Create(int width, int height, int bitsPerPixel) {
    const bool isHalfMade = m_pBitmapInfo && !m_hBitmap;   // an earlier Create got no bitmap
    if (!isHalfMade && width == GetWidth() && height == GetHeight() && bitsPerPixel == GetBitsPrPixel()) {
        return 1;
    }
    if (!IsDepth(bitsPerPixel)) {
        return 0;
    }
    const HDC display = ::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    if (!display) {
        return 0;
    }
    Destroy();
    if (CreateHeader(width, height, bitsPerPixel)) {
        void* bits = nullptr;
        m_hBitmap = ::CreateDIBSection(display, m_pBitmapInfo, DIB_RGB_COLORS, &bits, nullptr, 0);
        m_pBits = static_cast<unsigned char*>(bits);
    }
    ::DeleteDC(display);
    return m_hBitmap != nullptr;
}

void CDibSection::Destroy() {
    if (m_hBitmap) {
        ::DeleteObject(m_hBitmap);
        m_hBitmap = nullptr;
    }
    m_pBits = nullptr;   // went with the bitmap
    CDib::Destroy();
}

}   // namespace winext

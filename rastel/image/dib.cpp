#include "rastel/image/dib.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

namespace winext {

CDib::~CDib() {
    CDib::Destroy();
}

bool CDib::IsDepth(int bitsPerPixel) {
    switch (bitsPerPixel) {
        case 1:
        case 4:
        case 8:
        case 16:
        case 24:
        case 32:
            return true;
        default:
            return false;
    }
}

std::int64_t CDib::RowBytes(int width, int bitsPerPixel) {
    return (static_cast<std::int64_t>(width) * bitsPerPixel + 31) / 32 * 4;
}

int CDib::PitchOf(int width, int bitsPerPixel) {
    constexpr std::int64_t least = std::numeric_limits<int>::min(), most = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(RowBytes(width, bitsPerPixel), least, most));
}

bool CDib::CreateHeader(int width, int height, int bitsPerPixel) {
    constexpr std::int64_t limit = std::numeric_limits<int>::max();
    const std::int64_t rowBytes = RowBytes(width, bitsPerPixel);
    if (width < 0 || rowBytes > limit || height == std::numeric_limits<int>::min()) {
        return false;
    }
    const std::int64_t imageBytes = std::abs(height) * rowBytes;   // two 31-bit numbers
    if (imageBytes > limit - 4) {
        return false;
    }
    // Colours, or where a bitmap of the system says which bits are which.
    const std::size_t tableBytes = bitsPerPixel < 9 ? sizeof(RGBQUAD) << bitsPerPixel : maskBytes;
    auto* const block = new (std::nothrow) unsigned char[sizeof(BITMAPINFOHEADER) + tableBytes]();
    if (!block) {
        return false;
    }
    auto* const header = new (block) BITMAPINFOHEADER{};
    header->biSize = sizeof(BITMAPINFOHEADER);
    header->biWidth = width;
    header->biHeight = height;
    header->biPlanes = 1;
    header->biBitCount = static_cast<WORD>(bitsPerPixel);
    header->biSizeImage = static_cast<DWORD>(imageBytes);
    m_pBitmapInfo = reinterpret_cast<BITMAPINFO*>(block);
    m_Pitch = static_cast<int>(rowBytes);
    return true;
}

int CDib::Create(int width, int height, int bitsPerPixel) {
    if (width == GetWidth() && height == GetHeight() && bitsPerPixel == GetBitsPrPixel()) {
        return 1;
    }
    if (!IsDepth(bitsPerPixel)) {
        return 0;
    }
    Destroy();
    if (!CreateHeader(width, height, bitsPerPixel)) {
        return 0;
    }
    // Four bytes more than the image needs, so that a pixel may be read as a word at its very end.
    m_pBits = new (std::nothrow) unsigned char[m_pBitmapInfo->bmiHeader.biSizeImage + 4];
    if (!m_pBits) {
        Destroy();
        return 0;
    }
    return 1;
}

void CDib::Destroy() {
    delete[] reinterpret_cast<unsigned char*>(m_pBitmapInfo);
    m_pBitmapInfo = nullptr;
    delete[] m_pBits;
    m_pBits = nullptr;
}

int CDib::GetWidth() {
    return m_pBitmapInfo ? m_pBitmapInfo->bmiHeader.biWidth : 0;
}

int CDib::GetHeight() {
    const LONG height = m_pBitmapInfo ? m_pBitmapInfo->bmiHeader.biHeight : 0;
    // A foreign header may hold the one number that has no positive counterpart.
    return std::abs(std::max<LONG>(height, -std::numeric_limits<LONG>::max()));
}

int CDib::GetPitch() {
    return m_Pitch;
}

unsigned char* CDib::GetBits() {
    return m_pBits;
}

int CDib::GetBitsPrPixel() {
    return m_pBitmapInfo ? m_pBitmapInfo->bmiHeader.biBitCount : 0;
}

int CDib::IsTopDown() {
    return m_pBitmapInfo && m_pBitmapInfo->bmiHeader.biHeight < 0;
}

int CDib::HasColorTable() {
    return GetBitsPrPixel() < 9;
}

RGBQUAD* CDib::GetColorTable() {
    return HasColorTable() && m_pBitmapInfo ? m_pBitmapInfo->bmiColors : nullptr;
}

int CDib::SetColor(int index, DWORD color) {
    RGBQUAD* const table = GetColorTable();
    if (!table || index < 0 || index >= 1 << GetBitsPrPixel()) {
        return 0;
    }
    table[index].rgbRed = static_cast<BYTE>(color);
    table[index].rgbGreen = static_cast<BYTE>(color >> 8);
    table[index].rgbBlue = static_cast<BYTE>(color >> 16);
    return 1;
}

DWORD CDib::GetColor(int index) {
    const RGBQUAD* const table = GetColorTable();
    if (!table || index < 0 || index >= 1 << GetBitsPrPixel()) {
        return 0;
    }
    const RGBQUAD& entry = table[index];
    return static_cast<DWORD>(entry.rgbBlue) << 16 | static_cast<DWORD>(entry.rgbGreen) << 8 | entry.rgbRed;
}

BITMAPINFO* CDib::GetBitmapInfo() {
    return m_pBitmapInfo;
}

}   // namespace winext

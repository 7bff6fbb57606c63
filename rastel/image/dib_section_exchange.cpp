// What a section does differently: its pixels can't leave the bitmap, and the bitmap is handed round itself.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "rastel/image/dib_section.h"
#include "rastel/platform/gdi.h"

namespace winext {

namespace {

// A bitmap's record does not hold its colours. They stay black where it is selected elsewhere.
void ReadColors(HBITMAP bitmap, BITMAPINFO& info) {
    const HDC context = ::CreateCompatibleDC(nullptr);
    if (!context) {
        return;
    }
    if (const HGDIOBJ old = ::SelectObject(context, bitmap)) {
        ::GetDIBColorTable(context, 0, 1u << info.bmiHeader.biBitCount, info.bmiColors);
        ::SelectObject(context, old);
    }
    ::DeleteDC(context);
}

}   // namespace

CDib* CDibSection::Assign(const CDib& other) {
    return CDib::Assign(other);
}

CDibSection* CDibSection::Assign(const CDibSection& other) {
    CDib::Assign(other);
    return this;
}

int CDibSection::LoadGlobal(HGLOBAL) {
    return 1;
}

int CDibSection::Attach(BITMAPINFO* pBitmapInfo, unsigned char* pBits) {
    if (!pBitmapInfo || !pBits || pBitmapInfo == m_pBitmapInfo || pBits == m_pBits) {
        return 0;
    }
    Destroy();
    const BITMAPINFOHEADER& header = pBitmapInfo->bmiHeader;
    if (Create(header.biWidth, header.biHeight, header.biBitCount) && m_pBits) {
        if (header.biBitCount < 9) {
            std::copy_n(pBitmapInfo->bmiColors, 1 << header.biBitCount, m_pBitmapInfo->bmiColors);
        }
        std::memcpy(m_pBits, pBits,
                    static_cast<std::size_t>(std::abs(header.biHeight)) * static_cast<std::size_t>(m_Pitch));
    }
    delete[] reinterpret_cast<unsigned char*>(pBitmapInfo);
    delete[] pBits;
    return 1;
}

int CDibSection::Detach(BITMAPINFO** ppBitmapInfo, unsigned char** ppBits) {
    if (!ppBitmapInfo || !ppBits) {
        return 0;
    }
    CDib copy;
    copy.Assign(*this);
    Destroy();
    return copy.Detach(ppBitmapInfo, ppBits);
}

int CDibSection::MoveTo(CDib& target) {
    if (&target == this) {
        return 1;
    }
    if (auto* const section = dynamic_cast<CDibSection*>(&target)) {
        section->Destroy();
        section->m_pBitmapInfo = m_pBitmapInfo;
        section->m_pBits = m_pBits;
        section->m_hBitmap = m_hBitmap;
        section->m_Pitch = m_Pitch;
        m_pBitmapInfo = nullptr;
        m_pBits = nullptr;
        m_hBitmap = nullptr;
        return 1;
    }
    BITMAPINFO* info = nullptr;
    unsigned char* bits = nullptr;
    return Detach(&info, &bits) ? HandOver(target, info, bits) : 0;
}

int CDibSection::CopyDib(CDib& other) {
    if (&other == this) {
        return 1;
    }
    Destroy();
    const BITMAPINFO* const info = other.GetBitmapInfo();
    if (!info) {
        return 1;
    }
    const int bits = info->bmiHeader.biBitCount;
    if (!Create(other.GetWidth(), other.GetHeight(), bits)) {
        return 0;
    }
    const unsigned char* const source = other.GetBits();
    if (!source || !m_pBits) {
        Destroy();
        return 0;
    }
    const int rowBytes = std::clamp(other.GetPitch(), 0, m_Pitch);   // a host's class may have closer rows
    std::memcpy(m_pBits, source, static_cast<std::size_t>(GetHeight()) * static_cast<std::size_t>(rowBytes));
    for (int i = 0; bits < 9 && i < 1 << bits; ++i) {
        SetColor(i, other.GetColor(i));
    }
    return 1;
}

int CDibSection::AttachBitmap(HBITMAP hBitmap) {
    if (hBitmap && hBitmap == m_hBitmap) {
        return 1;
    }
    Destroy();
    m_hBitmap = hBitmap;
    DIBSECTION section = {};
    const BITMAPINFOHEADER& header = section.dsBmih;
    if (!hBitmap || ::GetObjectW(hBitmap, sizeof(section), &section) != static_cast<int>(sizeof(section)) ||
        !section.dsBm.bmBits || !IsDepth(header.biBitCount) ||
        !CreateHeader(header.biWidth, header.biHeight, header.biBitCount)) {
        m_hBitmap = nullptr;
        return 0;
    }
    m_pBitmapInfo->bmiHeader = header;
    if (header.biCompression == BI_BITFIELDS) {
        std::memcpy(m_pBitmapInfo->bmiColors, section.dsBitfields, maskBytes);
        constexpr DWORD usual16[] = {0x7C00, 0x03E0, 0x001F}, usual32[] = {0xFF0000, 0xFF00, 0xFF};
        const DWORD* const usual = header.biBitCount == 16 ? usual16 : usual32;
        if (std::equal(usual, usual + 3, section.dsBitfields)) {
            m_pBitmapInfo->bmiHeader.biCompression = BI_RGB;
        }
    }
    m_pBits = static_cast<unsigned char*>(section.dsBm.bmBits);
    m_Pitch = PitchOf(GetWidth(), GetBitsPrPixel());
    if (header.biBitCount < 9) {
        ReadColors(hBitmap, *m_pBitmapInfo);
    }
    return 1;
}

HBITMAP CDibSection::DetachBitmap() {
    const HBITMAP bitmap = m_hBitmap;
    m_hBitmap = nullptr;
    Destroy();
    return bitmap;
}

}   // namespace winext

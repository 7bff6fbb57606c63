// Copying an image, taking one over, handing it out.
#include <cstdlib>
#include <cstring>

#include "rastel/image/dib.h"

namespace winext {

CDib* CDib::Assign(const CDib& other) {
    if (&other == this) {
        return this;
    }
    Destroy();
    if (!other.m_pBitmapInfo || !other.m_pBits) {
        return this;
    }
    const BITMAPINFOHEADER& header = other.m_pBitmapInfo->bmiHeader;
    if (!Create(header.biWidth, header.biHeight, header.biBitCount) || !m_pBits) {
        return this;
    }
    std::memcpy(m_pBits, other.m_pBits,
                static_cast<std::size_t>(std::abs(header.biHeight)) * static_cast<std::size_t>(m_Pitch));
    if (header.biBitCount < 9) {
        // Reading colours changes nothing; the accessor only isn't declared so.
        auto& source = const_cast<CDib&>(other);
        for (int i = 0; i < 1 << header.biBitCount; ++i) {
            SetColor(i, source.GetColor(i));
        }
    }
    return this;
}

int CDib::Attach(BITMAPINFO* pBitmapInfo, unsigned char* pBits) {
    // Blocks that are this object's already must outlive the old image.
    if (m_pBitmapInfo == pBitmapInfo) {
        m_pBitmapInfo = nullptr;
    }
    if (m_pBits == pBits) {
        m_pBits = nullptr;
    }
    Destroy();
    m_pBitmapInfo = pBitmapInfo;
    m_pBits = pBits;
    m_Pitch = PitchOf(GetWidth(), GetBitsPrPixel());
    return 1;
}

int CDib::Detach(BITMAPINFO** ppBitmapInfo, unsigned char** ppBits) {
    if (!ppBitmapInfo || !ppBits) {
        return 0;
    }
    *ppBitmapInfo = m_pBitmapInfo;
    *ppBits = m_pBits;
    m_pBitmapInfo = nullptr;
    m_pBits = nullptr;
    return 1;
}

int CDib::HandOver(CDib& target, BITMAPINFO* pBitmapInfo, unsigned char* pBits) {
    const int result = target.Attach(pBitmapInfo, pBits);
    if (!result && (!pBitmapInfo || !pBits)) {
        // Half an image was refused, and nobody else knows of it.
        delete[] reinterpret_cast<unsigned char*>(pBitmapInfo);
        delete[] pBits;
    }
    return result;
}

int CDib::MoveTo(CDib& target) {
    if (&target == this) {
        return 1;
    }
    const int result = HandOver(target, m_pBitmapInfo, m_pBits);
    m_pBitmapInfo = nullptr;
    m_pBits = nullptr;
    return result;
}

}   // namespace winext

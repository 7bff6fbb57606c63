// The bodies of DibStore, for the two files that instantiate it.
#pragma once

#include "rastel/surface/dib_store.h"

namespace rastel {

template <class Base>
int DibStore<Base>::CreatePixels(int width, int height, int bitsPerPixel) {
    const CSingleLock lock(&this->m_SyncObject, TRUE);
    if (width < 1 || height < 1) {
        return 0;
    }
    if (m_Dib.GetBits()) {
        this->Destroy();   // the old pixels are counted with the old size
    }
    if (!m_Dib.Create(width, -height, bitsPerPixel)) {
        return 0;
    }
    this->m_Width = width;
    this->m_Height = height;
    this->m_Pitch = m_Dib.GetPitch();
    if (m_Dib.HasColorTable()) {
        for (int i = 0; i < 1 << bitsPerPixel; ++i) {
            m_Dib.SetColor(i, static_cast<DWORD>(i) * 0x010101);
        }
    }
    CSurfaceBase::m_SurfacesMemory += PixelBytes();
    return 1;
}

template <class Base>
void DibStore<Base>::ReleasePixels() {
    if (m_hDC) {
        this->ReleaseDC(m_hDC);
    }
    if (m_Dib.GetBits()) {
        CSurfaceBase::m_SurfacesMemory -= PixelBytes();
    }
    m_Dib.Destroy();
}

template <class Base>
unsigned char* DibStore<Base>::LockData() {
    const CSingleLock lock(&this->m_SyncObject, TRUE);
    if (m_Locked || !m_Dib.GetBits()) {
        return nullptr;
    }
    m_Locked = 1;
    ::GdiFlush();   // drawing that GDI has queued must be in the pixels before they are read
    return m_Dib.GetBits();
}

template <class Base>
void DibStore<Base>::UnlockData() {
    const CSingleLock lock(&this->m_SyncObject, TRUE);
    m_Locked = 0;
}

template <class Base>
HDC DibStore<Base>::GetDC() {
    const CSingleLock lock(&this->m_SyncObject, TRUE);
    if (m_hDC || !m_Dib.m_hBitmap) {
        return nullptr;
    }
    m_hDC = ::CreateCompatibleDC(nullptr);
    if (!m_hDC) {
        return nullptr;
    }
    m_OldBitmap = ::SelectObject(m_hDC, m_Dib.m_hBitmap);
    if (const RGBQUAD* const colors = m_Dib.GetColorTable()) {
        ::SetDIBColorTable(m_hDC, 0, 1u << m_Dib.GetBitsPrPixel(), colors);
    }
    return m_hDC;
}

template <class Base>
void DibStore<Base>::ReleaseDC(HDC) {
    const CSingleLock lock(&this->m_SyncObject, TRUE);
    if (!m_hDC) {
        return;
    }
    ::SelectObject(m_hDC, m_OldBitmap);
    ::DeleteDC(m_hDC);
    m_hDC = nullptr;
    m_OldBitmap = nullptr;
}

}   // namespace rastel

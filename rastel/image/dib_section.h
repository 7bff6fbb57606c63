// A DIB whose pixels live in a GDI DIB section: the same bytes through a pointer and through a bitmap handle.
#pragma once

#include "rastel/image/dib.h"

namespace winext {

class RASTEL_API CDibSection : public CDib {
public:
    CDibSection() = default;
    ~CDibSection() override;   // m_hBitmap must not be selected into a context any more

    // As CDib's, the pixels all zero. 0 with the old image kept where the display gives no context.
    int Create(int width, int height, int bitsPerPixel) override;
    void Destroy() override;
    CDib* Assign(const CDib& other) override;
    int LoadGlobal(HGLOBAL hGlobal) override;
    int Attach(BITMAPINFO* pBitmapInfo, unsigned char* pBits) override;
    int Detach(BITMAPINFO** ppBitmapInfo, unsigned char** ppBits) override;
    int MoveTo(CDib& target) override;

    // The order of the virtual operations is binary interface.
    virtual CDibSection* Assign(const CDibSection& other);
    virtual int CopyDib(CDib& other);
    virtual int AttachBitmap(HBITMAP hBitmap);
    virtual HBITMAP DetachBitmap();
    virtual int LoadIconImage(HMODULE hModule, const wchar_t* pName, int width, int height, int bitsPerPixel);

    HBITMAP m_hBitmap = nullptr;   // owned; stores select it into their contexts
};

}   // namespace winext

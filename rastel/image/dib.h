// A device-independent bitmap in plain heap memory, and one whose pixels GDI can draw into as well.
//
// No locks: the owner serialises access. Failure is a returned 0 or null.
#pragma once

#include "rastel/image/image.h"
#include "rastel/platform/types.h"

namespace Gdiplus {
class Bitmap;
}

namespace winext {

class RASTEL_API CDib : public CImage {
public:
    CDib() = default;
    ~CDib() override;

    // 1, 4, 8, 16, 24 or 32 bits; anything else gives 0 and keeps the old image. The same size and depth keep the
    // image, whichever way its rows run. Rows are padded to 4 bytes. Pixels and colours are as the allocator left them.
    int Create(int width, int height, int bitsPerPixel) override;
    void Destroy() override;
    int GetWidth() override;
    int GetHeight() override;
    int GetPitch() override;
    unsigned char* GetBits() override;
    int GetBitsPrPixel() override;
    int HasColorTable() override;
    int SetColor(int index, DWORD color) override;
    RGBQUAD* GetColorTable() override;
    DWORD GetColor(int index) override;
    int IsTopDown() override;

    // The order of the virtual operations is binary interface.
    virtual CDib* Assign(const CDib& other);
    virtual int LoadGlobal(HGLOBAL hGlobal);
    virtual int Attach(BITMAPINFO* pBitmapInfo, unsigned char* pBits);
    virtual int Detach(BITMAPINFO** ppBitmapInfo, unsigned char** ppBits);
    virtual int MoveTo(CDib& target);
    virtual HGLOBAL CreateGlobal();
    virtual BITMAPINFO* GetBitmapInfo();   // the object's own, not a copy; null with no image
    virtual Gdiplus::Bitmap* CreateBitmap();

protected:
    static bool IsDepth(int bitsPerPixel);

    // Allocates the header, with room for a colour table at 8 bits and below, and fills it in. False: out of memory, or
    // a size whose bytes pass 31 bits.
    bool CreateHeader(int width, int height, int bitsPerPixel);

    BITMAPINFO* m_pBitmapInfo = nullptr;   // owned, made with array new
    unsigned char* m_pBits = nullptr;      // owned, made with array new
    int m_Pitch = 0;
};

}   // namespace winext

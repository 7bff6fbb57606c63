// A device-independent bitmap in plain heap memory, and one whose pixels GDI can draw into as well.
//
// No locks: the owner serialises access. Failure is a returned 0 or null.
#pragma once

#include <cstdint>

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

    // Becomes a copy of `other`, orientation and colours included; empty where that is empty or memory runs out.
    // Returns this object in every case.
    virtual CDib* Assign(const CDib& other);

    // Reads a packed DIB: a 40-byte header, a colour table at 8 bits and below, the pixels. The block stays the
    // caller's. All 1 << bits colours are taken, as far as the block goes and black beyond it; the pixels begin behind
    // biClrUsed of them, or behind all where that is 0. A block that ends before its pixels do gives 0 and keeps the
    // old image. As Create keeps an image of the same size, the rows then run as they did.
    virtual int LoadGlobal(HGLOBAL hGlobal);

    // Takes over both blocks, which must come from array new. Always 1.
    virtual int Attach(BITMAPINFO* pBitmapInfo, unsigned char* pBits);

    // Hands out both blocks, null with no image, and leaves this object empty. The caller frees them with array
    // delete.
    virtual int Detach(BITMAPINFO** ppBitmapInfo, unsigned char** ppBits);

    // The target's Attach takes this object's image over. What that returned.
    virtual int MoveTo(CDib& target);

    // A packed DIB in moveable memory, the caller's. Null below 15 bits: no colour table is written.
    virtual HGLOBAL CreateGlobal();

    virtual BITMAPINFO* GetBitmapInfo();   // the object's own, not a copy; null with no image
    virtual Gdiplus::Bitmap* CreateBitmap();

protected:
    static bool IsDepth(int bitsPerPixel);

    static std::int64_t RowBytes(int width, int bitsPerPixel);   // padded to 4
    static int PitchOf(int width, int bitsPerPixel);             // the same, held within 32 bits

    static constexpr std::size_t maskBytes = 3 * sizeof(DWORD);

    // Allocates the header, with room for a colour table at 8 bits and below and for masks above, and fills it in.
    // False: out of memory, or a size whose bytes pass 31 bits.
    bool CreateHeader(int width, int height, int bitsPerPixel);

    // The target's Attach with two blocks that are nobody else's.
    static int HandOver(CDib& target, BITMAPINFO* pBitmapInfo, unsigned char* pBits);

    BITMAPINFO* m_pBitmapInfo = nullptr;   // owned, made with array new
    unsigned char* m_pBits = nullptr;      // owned, made with array new
    int m_Pitch = 0;
};

}   // namespace winext

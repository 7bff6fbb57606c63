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
    int LoadGlobal(HGLOBAL hGlobal) override;   // does nothing, returns 1

    // Copies the image into a section of its own and frees both blocks, where the copy failed too. 0 with a null
    // block: the caller keeps both, and this object its image.
    int Attach(BITMAPINFO* pBitmapInfo, unsigned char* pBits) override;

    int Detach(BITMAPINFO** ppBitmapInfo, unsigned char** ppBits) override;   // hands out a copy in heap memory
    int MoveTo(CDib& target) override;   // to a section: the bitmap itself; else a copy through Detach

    // The order of the virtual operations is binary interface.
    virtual CDibSection* Assign(const CDibSection& other);

    // Becomes a copy of what the other's accessors show, rows in memory order and always bottom-up, so that a top-down
    // image comes out upside down. 1 for an empty one as well, which leaves this object empty.
    virtual int CopyDib(CDib& other);

    // Takes over a DIB section. 0 for a handle that is none: this object is empty and the caller keeps the handle.
    virtual int AttachBitmap(HBITMAP hBitmap);

    // Hands out the section and leaves this object empty. Null with no image; else the caller deletes it.
    virtual HBITMAP DetachBitmap();

    // Takes the first image of exactly this size and 32 bits from an icon file, or, with a module, from the icon group
    // of that name in it (a text or MAKEINTRESOURCEW), alpha byte included. Only 32 bitsPerPixel are read. 0: no such
    // file, resource or image, one compressed or cut short; the old image stays. The rows of an icon run bottom-up; as
    // Create keeps an image of the same size, an object that holds a top-down one must be destroyed first.
    virtual int LoadIconImage(HMODULE hModule, const wchar_t* pName, int width, int height, int bitsPerPixel);

    HBITMAP m_hBitmap = nullptr;   // owned; stores select it into their contexts
};

}   // namespace winext

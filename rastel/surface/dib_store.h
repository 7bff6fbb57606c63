// The store that keeps pixels in a DIB section: one block, reachable by address and through a device context. Colour
// surfaces and planes in memory share it; `Base` is the abstract class that it completes.
//
// Both kinds of access are exclusive and refuse a second user at once; they don't exclude one another. The lock
// guards the fields for the length of one operation, never while a caller works on the pixels.
#pragma once

#include "rastel/image/dib_section.h"
#include "rastel/platform/framework.h"
#include "rastel/platform/gdi.h"
#include "rastel/surface/surface_base.h"

namespace rastel {

template <class Base>
class RASTEL_API DibStore : public Base {
public:
    HDC GetDC() override;
    void ReleaseDC(HDC hDC) override;   // the context that is out, whatever the argument
    unsigned char* LockData() override;
    void UnlockData() override;

protected:
    // `bitsPerPixel` of the section. The colour table of an 8-bit one becomes the grey ramp.
    int CreatePixels(int width, int height, int bitsPerPixel);
    void ReleasePixels();   // the size fields and m_Locked stay

    winext::CDibSection m_Dib;
    HGDIOBJ m_OldBitmap = nullptr;   // what the section replaced in m_hDC
    HDC m_hDC = nullptr;
    int m_Locked = 0;

private:
    LONG PixelBytes() { return this->GetBytesPrPixel() * this->m_Height * this->m_Width; }
};

}   // namespace rastel

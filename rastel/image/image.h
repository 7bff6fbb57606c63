// The abstract view of a device-independent bitmap: what a plane or a composite asks of a host's picture.
#pragma once

#include "rastel/platform/types.h"

namespace winext {

class RASTEL_API CImage {
public:
    CImage() = default;
    CImage(const CImage&) = delete;
    CImage& operator=(const CImage&) = delete;

    // The order of the virtual operations is binary interface.
    virtual ~CImage();
    virtual int Create(int width, int height, int bitsPerPixel) = 0;   // height below 0: top-down
    virtual void Destroy() = 0;
    virtual int GetWidth() = 0;
    virtual int GetHeight() = 0;            // never negative
    virtual int GetPitch() = 0;             // bytes from one row to the next
    virtual unsigned char* GetBits() = 0;   // the first row in memory: the top one if IsTopDown, else the bottom one
    virtual int GetBitsPrPixel() = 0;
    virtual int HasColorTable() = 0;
    virtual int SetColor(int index, DWORD color) = 0;   // COLORREF order
    virtual RGBQUAD* GetColorTable() = 0;
    virtual DWORD GetColor(int index) = 0;   // COLORREF order
    virtual int IsTopDown() = 0;
};

}   // namespace winext

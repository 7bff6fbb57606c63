// The pixels behind surfaces, textures and swap chains. Interfaces come and go; images are shared.
#pragma once

#include <memory>
#include <vector>

#include "rastel/platform/portable/d3d9/device_object.h"
#include "rastel/platform/portable/gdi/objects.h"

namespace rastel::platform::d3d {

constexpr UINT longestSide = 8192;

bool IsColorFormat(D3DFORMAT format);   // that surfaces and textures may have
bool IsDepthFormat(D3DFORMAT format);
D3DFORMAT DisplayFormat();   // of the display as it is now

// Colours are a bitmap that GDI may draw on; depths are numbers from 0, near, to 1, whatever bits the format names.
struct Image : Body {
    D3DSURFACE_DESC description{};
    std::shared_ptr<BitmapObject> bitmap;
    std::vector<float> depths;
    bool isLocked = false;

    int Width() const { return static_cast<int>(description.Width); }
    int Height() const { return static_cast<int>(description.Height); }
    RECT Whole() const { return {0, 0, Width(), Height()}; }
    BYTE* Row(int y) const { return bitmap->pixels.Data() + static_cast<std::ptrdiff_t>(y) * bitmap->pitch; }
    int BytesPerPixel() const { return bitmap->format.bitsPerPixel / 8; }
};
using ImagePointer = std::shared_ptr<Image>;

// Null: no such format or size, or no memory. Fresh colours are 0, fresh depths 1.
ImagePointer MakeImage(UINT width, UINT height, D3DFORMAT format, DWORD usage, D3DPOOL pool);

// Colours as 0xAARRGGBB. Formats without alpha read as opaque.
DWORD LoadColor(D3DFORMAT format, const BYTE* pixel);
void StoreColor(D3DFORMAT format, BYTE* pixel, DWORD color);

bool IsPart(const RECT& part, const Image& image);   // inside, and not empty

// Copies with conversion; sizes that differ pick pixels. False: a rectangle lies outside, or there is no memory.
bool CopyImage(const Image& source, const RECT& part, const Image& target, const RECT& landing);

}   // namespace rastel::platform::d3d

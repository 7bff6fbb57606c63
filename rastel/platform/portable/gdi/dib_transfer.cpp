// Rows between bitmaps and packed pixels in memory, without a context's clip or colours.
#include <algorithm>
#include <cstring>

#include "rastel/platform/portable/gdi/dib_layout.h"
#include "rastel/platform/portable/gdi/pixel_color.h"
#include "rastel/platform/portable/gdi/pixel_convert.h"

using rastel::platform::BitmapObject;
using rastel::platform::DibLayout;
using rastel::platform::Find;
using rastel::platform::FindContext;
using rastel::platform::PixelBuffer;
using rastel::platform::PixelFormat;

namespace {

// Rows of a picture that are asked for and that both sides have: bits row i goes with picture row top + i * step.
struct RowRange {
    int count = 0;
    int top = 0;
    int step = 1;
};

RowRange RowsOf(const BitmapObject& bitmap, const DibLayout& layout, UINT firstRow, UINT rows) {
    const int limit = std::min(bitmap.height, layout.height);
    RowRange range;
    if (firstRow >= static_cast<UINT>(limit)) {
        return range;
    }
    range.count = static_cast<int>(std::min(rows, static_cast<UINT>(limit) - firstRow));
    const int first = static_cast<int>(firstRow);
    range.top = layout.topDown ? first : bitmap.height - 1 - first;
    range.step = layout.topDown ? 1 : -1;
    return range;
}

bool HasMasks(const BITMAPINFOHEADER& header) {
    return header.biCompression == BI_BITFIELDS && (header.biBitCount == 16 || header.biBitCount == 32);
}

// What a bitmap would look like as packed pixels, into the header that asks for it.
void DescribeBitmap(const BitmapObject& bitmap, BITMAPINFOHEADER* header) {
    const DWORD size = header->biSize;
    *header = {};
    header->biSize = size;
    header->biWidth = bitmap.width;
    header->biHeight = bitmap.height;
    header->biPlanes = 1;
    header->biBitCount = static_cast<WORD>(bitmap.format.bitsPerPixel);
    const int depth = bitmap.format.bitsPerPixel;
    const PixelFormat plain = rastel::platform::FormatOfDepth(depth == 16 ? 15 : depth);
    header->biCompression = depth >= 16 && !(bitmap.format == plain) ? BI_BITFIELDS : BI_RGB;
    header->biSizeImage = static_cast<DWORD>(std::int64_t{bitmap.pitch} * bitmap.height);
}

void WriteMasks(const PixelFormat& format, BITMAPINFO* info) {
    const DWORD masks[3] = {format.redMask, format.greenMask, format.blueMask};
    std::memcpy(reinterpret_cast<unsigned char*>(info) + sizeof(BITMAPINFOHEADER), masks, sizeof(masks));
}

// The colours that the bits will be in: the bitmap's own where the depth is the same.
void WriteColors(const BitmapObject& bitmap, BITMAPINFO* info) {
    const int depth = info->bmiHeader.biBitCount;
    const std::size_t count = std::size_t{1} << depth;
    const bool own = bitmap.format.bitsPerPixel == depth && bitmap.colors.size() == count;
    const RGBQUAD* const colors = own ? bitmap.colors.data() : rastel::platform::UsualColors(depth);
    std::memcpy(rastel::platform::DibColorTable(info), colors, count * sizeof(RGBQUAD));
    info->bmiHeader.biClrUsed = 0;
}

bool IsIndexedDepth(int depth) {
    return depth == 1 || depth == 4 || depth == 8;
}

}   // namespace

int GetDIBits(HDC context, HBITMAP bitmap, UINT firstRow, UINT rows, LPVOID bits, LPBITMAPINFO info, UINT usage) {
    const auto found = Find<BitmapObject>(bitmap);
    if (!FindContext(context) || !found || info == nullptr || usage != DIB_RGB_COLORS ||
        info->bmiHeader.biSize < sizeof(BITMAPINFOHEADER)) {
        return 0;
    }
    BITMAPINFOHEADER& header = info->bmiHeader;
    if (bits == nullptr && header.biBitCount == 0) {
        DescribeBitmap(*found, &header);
        if (HasMasks(header) && header.biSize > sizeof(BITMAPINFOHEADER)) {
            WriteMasks(found->format, info);
        }
        return 1;
    }
    if (IsIndexedDepth(header.biBitCount) && header.biCompression == BI_RGB) {
        WriteColors(*found, info);
    } else if (HasMasks(header)) {
        const bool own = header.biBitCount == found->format.bitsPerPixel;
        WriteMasks(own ? found->format : rastel::platform::FormatOfDepth(header.biBitCount), info);
    }
    DibLayout layout;
    if (!ReadDibLayout(info, usage, nullptr, &layout)) {
        return 0;
    }
    header.biSizeImage = layout.Bytes() > INT32_MAX ? 0 : static_cast<DWORD>(layout.Bytes());
    if (bits == nullptr) {
        return 1;
    }
    const RowRange range = RowsOf(*found, layout, firstRow, rows);
    const PixelBuffer source = PixelsOf(*found);
    rastel::platform::PixelConverter converter(source, layout.View(bits), {});
    for (int i = 0; i < range.count; ++i) {
        converter.ConvertRow(source.Row(range.top + i * range.step), 0,
                             static_cast<unsigned char*>(bits) + static_cast<std::ptrdiff_t>(i) * layout.pitch, 0,
                             std::min(source.width, layout.width));
    }
    return range.count;
}

int SetDIBits(HDC context, HBITMAP bitmap, UINT firstRow, UINT rows, const void* bits, const BITMAPINFO* info,
              UINT usage) {
    const auto selected = FindContext(context);
    const auto found = Find<BitmapObject>(bitmap);
    DibLayout layout;
    if ((context != nullptr && !selected) || !found || found->stock || bits == nullptr ||
        !ReadDibLayout(info, usage, selected.get(), &layout)) {
        return 0;
    }
    const RowRange range = RowsOf(*found, layout, firstRow, rows);
    const PixelBuffer target = PixelsOf(*found);
    rastel::platform::PixelConverter converter(layout.View(bits), target, {});
    for (int i = 0; i < range.count; ++i) {
        converter.ConvertRow(static_cast<const unsigned char*>(bits) + static_cast<std::ptrdiff_t>(i) * layout.pitch, 0,
                             target.Row(range.top + i * range.step), 0, std::min(target.width, layout.width));
    }
    return range.count;
}

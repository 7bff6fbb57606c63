#include "rastel/platform/portable/gdi/dib_layout.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace rastel::platform {

namespace {

constexpr DWORD kMinHeader = sizeof(BITMAPINFOHEADER);
constexpr DWORD kMaxHeader = 4096;   // later headers are longer; one beyond this is not meant

bool IsContiguous(DWORD mask) {
    return mask != 0 && std::has_single_bit((mask >> std::countr_zero(mask)) + 1ull);
}

bool ReadMasks(const BITMAPINFO* info, DibLayout* layout) {
    // The masks stand behind the 40 bytes of the first header, as part of the later ones.
    DWORD masks[3];
    std::memcpy(masks, reinterpret_cast<const unsigned char*>(info) + kMinHeader, sizeof(masks));
    const DWORD allowed = layout->format.bitsPerPixel == 16 ? 0xFFFF : 0xFFFFFFFF;
    for (const DWORD mask : masks) {
        if (!IsContiguous(mask) || (mask & ~allowed) != 0) {
            return false;
        }
    }
    if ((masks[0] & masks[1]) != 0 || (masks[0] & masks[2]) != 0 || (masks[1] & masks[2]) != 0) {
        return false;
    }
    layout->format.redMask = masks[0];
    layout->format.greenMask = masks[1];
    layout->format.blueMask = masks[2];
    std::copy(masks, masks + 3, layout->bitFields);
    return true;
}

void ReadColors(const BITMAPINFO* info, UINT usage, const DeviceContext* context, DibLayout* layout) {
    const DWORD most = 1u << layout->format.bitsPerPixel;
    const DWORD used = info->bmiHeader.biClrUsed;
    const DWORD count = used == 0 ? most : std::min(used, most);
    layout->colors.assign(most, RGBQUAD{});
    if (usage != DIB_PAL_COLORS) {
        std::memcpy(layout->colors.data(), DibColorTable(info), std::size_t{count} * sizeof(RGBQUAD));
        return;
    }
    const auto* const table = reinterpret_cast<const unsigned char*>(DibColorTable(info));
    for (DWORD i = 0; i < count && context != nullptr; ++i) {
        WORD index;
        std::memcpy(&index, table + std::size_t{i} * sizeof(index), sizeof(index));
        const std::vector<PALETTEENTRY>& entries = context->state.palette->entries;
        if (!entries.empty()) {
            const PALETTEENTRY& entry = entries[index % entries.size()];
            layout->colors[i] = {entry.peBlue, entry.peGreen, entry.peRed, 0};
        }
    }
}

}   // namespace

PixelBuffer DibLayout::View(const void* bits) const {
    PixelBuffer view;
    // A view has one kind of pointer for what is read and what is drawn on.
    view.bits = const_cast<unsigned char*>(static_cast<const unsigned char*>(bits));
    view.pitch = pitch;
    if (!topDown) {
        view.bits += static_cast<std::ptrdiff_t>(height - 1) * pitch;
        view.pitch = -pitch;
    }
    view.width = width;
    view.height = height;
    view.format = format;
    view.colors = colors.empty() ? nullptr : colors.data();
    view.colorCount = static_cast<int>(colors.size());
    return view;
}

bool ReadDibLayout(const BITMAPINFO* info, UINT usage, const DeviceContext* context, DibLayout* layout) {
    if (info == nullptr || (usage != DIB_RGB_COLORS && usage != DIB_PAL_COLORS)) {
        return false;
    }
    const BITMAPINFOHEADER& header = info->bmiHeader;
    if (header.biSize < kMinHeader || header.biSize > kMaxHeader || header.biWidth <= 0 || header.biHeight == 0 ||
        header.biHeight == INT32_MIN) {
        return false;
    }
    const int depth = header.biBitCount;
    const std::int64_t pitch = (std::int64_t{header.biWidth} * depth + 31) / 32 * 4;
    if (pitch > INT32_MAX) {
        return false;
    }
    layout->width = header.biWidth;
    layout->height = header.biHeight < 0 ? -header.biHeight : header.biHeight;
    layout->topDown = header.biHeight < 0;
    layout->pitch = static_cast<int>(pitch);
    switch (depth) {
        case 1:
        case 4:
        case 8:
            layout->format = FormatOfDepth(depth);
            if (header.biCompression != BI_RGB) {
                return false;
            }
            ReadColors(info, usage, context, layout);
            return true;
        case 16:
            layout->format = FormatOfDepth(15);
            break;
        case 24:
        case 32:
            layout->format = FormatOfDepth(depth);
            break;
        default:
            return false;
    }
    if (header.biCompression == BI_BITFIELDS) {
        return depth != 24 && ReadMasks(info, layout);
    }
    return header.biCompression == BI_RGB;
}

const RGBQUAD* DibColorTable(const BITMAPINFO* info) {
    std::size_t offset = info->bmiHeader.biSize;
    if (info->bmiHeader.biSize == kMinHeader && info->bmiHeader.biCompression == BI_BITFIELDS) {
        offset += 3 * sizeof(DWORD);
    }
    return reinterpret_cast<const RGBQUAD*>(reinterpret_cast<const unsigned char*>(info) + offset);
}

RGBQUAD* DibColorTable(BITMAPINFO* info) {
    return const_cast<RGBQUAD*>(DibColorTable(static_cast<const BITMAPINFO*>(info)));
}

}   // namespace rastel::platform

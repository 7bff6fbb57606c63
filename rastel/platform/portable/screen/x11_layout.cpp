#include "rastel/platform/portable/screen/x11_layout.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "rastel/platform/portable/screen/mode_list.h"

namespace rastel::platform {

namespace {

void SwapBytes(unsigned char* row, int pixels, int bytesPerPixel) {
    for (int x = 0; x < pixels; ++x, row += bytesPerPixel) {
        std::reverse(row, row + bytesPerPixel);
    }
}

void SetBits(unsigned char* row, int pixels, DWORD bits) {
    for (int x = 0; x < pixels; ++x, row += 4) {
        DWORD pixel;
        std::memcpy(&pixel, row, 4);
        pixel |= bits;
        std::memcpy(row, &pixel, 4);
    }
}

bool Describe(const xcb_visualtype_t& visual, PixelLayout* layout) {
    PixelFormat& format = layout->format;
    switch (visual._class) {
        case XCB_VISUAL_CLASS_TRUE_COLOR:
        case XCB_VISUAL_CLASS_DIRECT_COLOR:
            format.redMask = visual.red_mask;
            format.greenMask = visual.green_mask;
            format.blueMask = visual.blue_mask;
            if (layout->depth == 32) {
                layout->opaqueBits = ~(format.redMask | format.greenMask | format.blueMask);
            }
            return format.bitsPerPixel >= 8 &&
                   AreSensibleMasks(format.bitsPerPixel, format.redMask, format.greenMask, format.blueMask);
        default:
            format.redMask = format.greenMask = format.blueMask = 0;
            layout->canStoreColors =
                visual._class == XCB_VISUAL_CLASS_PSEUDO_COLOR || visual._class == XCB_VISUAL_CLASS_GRAY_SCALE;
            layout->colorCount = std::min<int>(visual.colormap_entries, 256);
            return format.bitsPerPixel == 8;
    }
}

}   // namespace

void PixelLayout::ToServer(unsigned char* bits, int width, int height) const {
    if (opaqueBits == 0 && !swapsBytes) {
        return;
    }
    const auto pitch = static_cast<std::ptrdiff_t>(PitchOf(width));
    for (int y = 0; y < height; ++y, bits += pitch) {
        if (opaqueBits != 0 && format.bitsPerPixel == 32) {
            SetBits(bits, width, opaqueBits);
        }
        if (swapsBytes) {
            SwapBytes(bits, width, format.bitsPerPixel / 8);
        }
    }
}

void PixelLayout::FromServer(unsigned char* bits, int width, int height) const {
    if (!swapsBytes) {
        return;
    }
    const auto pitch = static_cast<std::ptrdiff_t>(PitchOf(width));
    for (int y = 0; y < height; ++y, bits += pitch) {
        SwapBytes(bits, width, format.bitsPerPixel / 8);
    }
}

X11Layouts::X11Layouts(const xcb_setup_t& setup, const xcb_screen_t& screen) {
    const bool serverIsLittle = setup.image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    const bool weAreLittle = std::endian::native == std::endian::little;
    for (auto depths = xcb_screen_allowed_depths_iterator(&screen); depths.rem > 0; xcb_depth_next(&depths)) {
        PixelLayout layout;
        layout.depth = depths.data->depth;
        layout.format.bitsPerPixel = 0;
        for (auto formats = xcb_setup_pixmap_formats_iterator(&setup); formats.rem > 0; xcb_format_next(&formats)) {
            if (formats.data->depth == layout.depth) {
                layout.format.bitsPerPixel = formats.data->bits_per_pixel;
                layout.rowPadBits = std::max<int>(formats.data->scanline_pad, 8);
            }
        }
        layout.swapsBytes = serverIsLittle != weAreLittle && layout.format.bitsPerPixel > 8;
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0; xcb_visualtype_next(&visuals)) {
            PixelLayout described = layout;
            if (Describe(*visuals.data, &described)) {
                entries_.push_back({visuals.data->visual_id, described});
            }
        }
    }
}

const PixelLayout* X11Layouts::Find(int depth, xcb_visualid_t visual) const {
    for (const Entry& entry : entries_) {
        if (entry.visual == visual && entry.layout.depth == depth) {
            return &entry.layout;
        }
    }
    return nullptr;
}

}   // namespace rastel::platform

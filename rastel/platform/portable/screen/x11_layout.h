// How an X server keeps the pixels of a window.
#pragma once

#include <xcb/xcb.h>

#include <vector>

#include "rastel/platform/portable/gdi/pixel_buffer.h"

namespace rastel::platform {

struct PixelLayout {
    PixelFormat format;
    int depth = 0;
    int rowPadBits = 32;
    bool swapsBytes = false;       // the server's words run the other way round than ours
    DWORD opaqueBits = 0;          // of an alpha channel that a compositor reads
    bool canStoreColors = false;   // indexed with a colour map that can be written
    int colorCount = 0;            // of its colour map

    std::int64_t PitchOf(int width) const {
        const std::int64_t bits = std::int64_t{width} * format.bitsPerPixel;
        return (bits + rowPadBits - 1) / rowPadBits * rowPadBits / 8;
    }

    // Pixels as we have them to pixels as the server wants them, in place, and back.
    void ToServer(unsigned char* bits, int width, int height) const;
    void FromServer(unsigned char* bits, int width, int height) const;
};

// The layouts of all visuals of a screen that the rasters can draw in.
class X11Layouts {
public:
    X11Layouts(const xcb_setup_t& setup, const xcb_screen_t& screen);
    const PixelLayout* Find(int depth, xcb_visualid_t visual) const;   // null: none that we know

private:
    struct Entry {
        xcb_visualid_t visual;
        PixelLayout layout;
    };
    std::vector<Entry> entries_;
};

}   // namespace rastel::platform

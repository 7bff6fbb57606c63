// The colour map of an X display of 8 bits or fewer.
#pragma once

#include <xcb/xcb.h>

#include <array>
#include <vector>

#include "rastel/platform/portable/screen/x11_connection.h"
#include "rastel/platform/portable/screen/x11_layout.h"

namespace rastel::platform {

using X11Colors = std::array<RGBQUAD, 256>;

// As many entries as the map has; those behind them are black.
X11Colors ReadColors(X11Connection& connection, xcb_colormap_t map, int count);

// The screen's own map. Its cells are shared with all programs: only those that nobody has taken can become ours.
class X11Palette {
public:
    X11Palette(X11Connection& connection, const PixelLayout& screen);

    const X11Colors& Read();   // as they are now
    const X11Colors& LastRead() const { return colors_; }

    // Stores what falls into cells that are ours. False: none did.
    bool Store(int first, const std::vector<RGBQUAD>& colors);

private:
    void TakeCells();

    X11Connection& connection_;
    xcb_connection_t* const xcb_;
    const xcb_colormap_t map_;
    const int count_;
    const bool canStore_;
    bool triedToTake_ = false;
    std::array<bool, 256> isOurs_{};
    X11Colors colors_{};
};

}   // namespace rastel::platform

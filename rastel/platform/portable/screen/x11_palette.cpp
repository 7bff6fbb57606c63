#include "rastel/platform/portable/screen/x11_palette.h"

#include <algorithm>

namespace rastel::platform {

namespace {

constexpr std::size_t kFixedAtEachEnd = 10;

// 16-bit channels of the server: 255 is all of it.
std::uint16_t Wide(BYTE value) {
    return static_cast<std::uint16_t>(value * 0x101);
}
BYTE Narrow(std::uint16_t value) {
    return static_cast<BYTE>(value >> 8);
}

}   // namespace

X11Colors ReadColors(X11Connection& connection, xcb_colormap_t map, int count) {
    X11Colors colors{};
    std::array<std::uint32_t, 256> pixels{};
    for (std::uint32_t i = 0; i < pixels.size(); ++i) {
        pixels[i] = i;
    }
    const auto entries = static_cast<std::uint32_t>(std::clamp(count, 0, 256));
    const auto cookie = xcb_query_colors(connection.Get(), map, entries, pixels.data());
    const XReply<xcb_query_colors_reply_t> reply(xcb_query_colors_reply(connection.Get(), cookie, nullptr));
    if (!reply) {
        return colors;
    }
    const xcb_rgb_t* const rgb = xcb_query_colors_colors(reply.get());
    const int got = std::min(xcb_query_colors_colors_length(reply.get()), static_cast<int>(colors.size()));
    for (int i = 0; i < got; ++i) {
        colors[static_cast<std::size_t>(i)] = {Narrow(rgb[i].blue), Narrow(rgb[i].green), Narrow(rgb[i].red), 0};
    }
    return colors;
}

X11Palette::X11Palette(X11Connection& connection, const PixelLayout& screen)
    : connection_(connection),
      xcb_(connection.Get()),
      map_(connection.Screen().default_colormap),
      count_(screen.colorCount),
      canStore_(screen.format.IsIndexed() && screen.canStoreColors) {
    if (screen.format.IsIndexed()) {
        Read();
    }
}

const X11Colors& X11Palette::Read() {
    if (connection_.IsAlive()) {
        colors_ = ReadColors(connection_, map_, count_);
    }
    return colors_;
}

void X11Palette::TakeCells() {
    triedToTake_ = true;
    std::vector<std::uint32_t> spare;
    // How many are left can't be asked: halving finds it in a few steps.
    for (std::uint16_t atOnce = 128; atOnce > 0;) {
        const auto cookie = xcb_alloc_color_cells(xcb_, 0, map_, atOnce, 0);
        const XReply<xcb_alloc_color_cells_reply_t> reply(xcb_alloc_color_cells_reply(xcb_, cookie, nullptr));
        if (!reply) {
            atOnce /= 2;
            continue;
        }
        const std::uint32_t* const pixels = xcb_alloc_color_cells_pixels(reply.get());
        const int got = xcb_alloc_color_cells_pixels_length(reply.get());
        for (int i = 0; i < got; ++i) {
            if (pixels[i] >= kFixedAtEachEnd && pixels[i] < isOurs_.size() - kFixedAtEachEnd) {
                isOurs_[pixels[i]] = true;
            } else {
                spare.push_back(pixels[i]);
            }
        }
        if (got == 0) {
            break;
        }
    }
    if (!spare.empty()) {
        xcb_free_colors(xcb_, map_, 0, static_cast<std::uint32_t>(spare.size()), spare.data());
    }
}

bool X11Palette::Store(int first, const std::vector<RGBQUAD>& colors) {
    const int size = static_cast<int>(isOurs_.size());
    if (!canStore_ || first < 0 || first > size || colors.size() > static_cast<std::size_t>(size - first)) {
        return false;
    }
    if (!triedToTake_) {
        TakeCells();
    }
    std::vector<xcb_coloritem_t> items;
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const std::size_t cell = static_cast<std::size_t>(first) + i;
        if (!isOurs_[cell]) {
            continue;
        }
        const RGBQUAD& color = colors[i];
        xcb_coloritem_t item{};
        item.pixel = static_cast<std::uint32_t>(cell);
        item.red = Wide(color.rgbRed);
        item.green = Wide(color.rgbGreen);
        item.blue = Wide(color.rgbBlue);
        item.flags = XCB_COLOR_FLAG_RED | XCB_COLOR_FLAG_GREEN | XCB_COLOR_FLAG_BLUE;
        items.push_back(item);
        colors_[cell] = {color.rgbBlue, color.rgbGreen, color.rgbRed, 0};
    }
    if (!items.empty()) {
        xcb_store_colors(xcb_, map_, static_cast<std::uint32_t>(items.size()), items.data());
        xcb_flush(xcb_);
    }
    return !items.empty();
}

}   // namespace rastel::platform

// BMP files without compression: 1, 4, 8, 16, 24 and 32 bits, colours by palette or by masks, either way up.
#include <algorithm>
#include <bit>

#include "examples/support/picture_codecs.h"

namespace rastel::example {

namespace {

constexpr std::size_t fileHeaderBytes = 14;
constexpr std::size_t infoHeaderBytes = 40;
constexpr DWORD plainRows = 0, rowsByMasks = 3, rowsByMasksAndAlpha = 6;

DWORD Little(Bytes bytes, std::size_t at, int count) {
    DWORD value = 0;
    for (int index = 0; index < count; ++index) {
        value |= static_cast<DWORD>(bytes[at + static_cast<std::size_t>(index)]) << (8 * index);
    }
    return value;
}

// One channel of a pixel, widened to 8 bits.
struct Channel {
    DWORD mask = 0;
    DWORD Of(DWORD pixel) const {
        if (!mask) {
            return 0;
        }
        const unsigned long long most = mask >> std::countr_zero(mask);
        const unsigned long long value = (pixel & mask) >> std::countr_zero(mask);
        return static_cast<DWORD>((value * 255 + most / 2) / most);
    }
};

struct Layout {
    long long width = 0, height = 0;
    bool topDown = false;
    int bits = 0;
    std::size_t firstRow = 0, rowBytes = 0;
    Channel red, green, blue, alpha;
    std::vector<DWORD> palette;
};

bool ReadMasks(Bytes bytes, DWORD headerBytes, DWORD compression, Layout& layout) {
    layout.red.mask = layout.bits == 16 ? 0x7C00 : 0xFF0000;
    layout.green.mask = layout.bits == 16 ? 0x03E0 : 0x00FF00;
    layout.blue.mask = layout.bits == 16 ? 0x001F : 0x0000FF;
    if (compression == plainRows) {
        return true;
    }
    const std::size_t at = fileHeaderBytes + infoHeaderBytes;   // behind a short header, inside a long one
    const bool withAlpha = headerBytes >= infoHeaderBytes + 16 || compression == rowsByMasksAndAlpha;
    if (bytes.size() < at + (withAlpha ? 16 : 12)) {
        return false;
    }
    layout.red.mask = Little(bytes, at, 4);
    layout.green.mask = Little(bytes, at + 4, 4);
    layout.blue.mask = Little(bytes, at + 8, 4);
    layout.alpha.mask = withAlpha ? Little(bytes, at + 12, 4) : 0;
    return true;
}

bool ReadPalette(Bytes bytes, DWORD headerBytes, DWORD used, Layout& layout) {
    const DWORD most = DWORD{1} << layout.bits;
    const DWORD count = used == 0 ? most : std::min(used, most);
    const std::size_t at = fileHeaderBytes + headerBytes;
    if (bytes.size() < at + std::size_t{count} * 4) {
        return false;
    }
    layout.palette.assign(most, 0xFF000000u);   // an index past the stored entries is black
    for (DWORD index = 0; index < count; ++index) {
        layout.palette[index] = 0xFF000000u | Little(bytes, at + std::size_t{index} * 4, 3);
    }
    return true;
}

bool ReadLayout(Bytes bytes, Layout& layout, std::string& error) {
    error = truncated;
    if (bytes.size() < fileHeaderBytes + infoHeaderBytes) {
        return false;
    }
    const DWORD headerBytes = Little(bytes, 14, 4);
    if (headerBytes < infoHeaderBytes || headerBytes > bytes.size() - fileHeaderBytes) {
        error = "the BMP header is of an unknown kind";
        return false;
    }
    const auto height = static_cast<std::int32_t>(Little(bytes, 22, 4));
    layout.width = static_cast<std::int32_t>(Little(bytes, 18, 4));
    layout.height = height < 0 ? -static_cast<long long>(height) : height;
    layout.topDown = height < 0;
    layout.bits = static_cast<int>(Little(bytes, 28, 2));
    layout.firstRow = Little(bytes, 10, 4);
    const DWORD compression = Little(bytes, 30, 4);
    const bool byMasks = compression == rowsByMasks || compression == rowsByMasksAndAlpha;
    const bool byPalette = layout.bits == 1 || layout.bits == 4 || layout.bits == 8;
    const bool direct = layout.bits == 16 || layout.bits == 24 || layout.bits == 32;
    if ((!byPalette && !direct) || (compression != plainRows && !(byMasks && direct && layout.bits != 24))) {
        error = "a BMP of this depth or compression is not read";
        return false;
    }
    return byPalette ? ReadPalette(bytes, headerBytes, Little(bytes, 46, 4), layout)
                     : ReadMasks(bytes, headerBytes, compression, layout);
}

DWORD PixelAt(const Layout& layout, Bytes row, int x) {
    if (layout.bits <= 8) {
        const int perByte = 8 / layout.bits;
        const DWORD byte = row[static_cast<std::size_t>(x / perByte)];
        return layout.palette[(byte >> (8 - layout.bits * (x % perByte + 1))) & ((1u << layout.bits) - 1)];
    }
    const int pixelBytes = layout.bits / 8;
    const DWORD pixel = Little(row, static_cast<std::size_t>(x) * static_cast<std::size_t>(pixelBytes), pixelBytes);
    const DWORD alpha = layout.alpha.mask ? layout.alpha.Of(pixel) : 255;
    return alpha << 24 | layout.red.Of(pixel) << 16 | layout.green.Of(pixel) << 8 | layout.blue.Of(pixel);
}

}   // namespace

std::optional<Picture> DecodeBmp(Bytes bytes, std::string& error) {
    Layout layout;
    if (!ReadLayout(bytes, layout, error)) {
        return std::nullopt;
    }
    std::optional<Picture> picture = MakePicture(layout.width, layout.height);
    if (!picture) {
        error = tooLarge;
        return picture;
    }
    layout.rowBytes = (static_cast<std::size_t>(layout.width) * static_cast<std::size_t>(layout.bits) + 31) / 32 * 4;
    const std::size_t needed = layout.rowBytes * static_cast<std::size_t>(layout.height);
    if (layout.firstRow > bytes.size() || bytes.size() - layout.firstRow < needed) {
        error = truncated;
        return std::nullopt;
    }
    for (int y = 0; y < picture->height; ++y) {
        const auto stored = static_cast<std::size_t>(layout.topDown ? y : picture->height - 1 - y);
        const Bytes row = bytes.subspan(layout.firstRow + stored * layout.rowBytes, layout.rowBytes);
        for (int x = 0; x < picture->width; ++x) {
            picture->Row(y)[x] = PixelAt(layout, row, x);
        }
    }
    return picture;
}

}   // namespace rastel::example

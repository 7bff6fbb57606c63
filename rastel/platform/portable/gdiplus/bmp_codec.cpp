// BMP files: 1 to 32 bits, with masks, run lengths and either order of rows.
#include <bit>
#include <cstring>

#include "rastel/platform/portable/gdiplus/image_file.h"

namespace rastel::platform::gdip {

namespace {

constexpr DWORD runs8 = 1, runs4 = 2, alphaBitFields = 6;

struct Header {
    std::int64_t width = 0, height = 0;
    bool isTopDown = false;
    int bits = 0;
    DWORD compression = BI_RGB;
    DWORD masks[4] = {};   // red, green, blue, alpha
    std::vector<DWORD> palette;
    std::size_t pixels = 0;   // where they begin
};

// Little-endian numbers out of a file; 0 beyond its end.
DWORD Number(FileBytes bytes, std::size_t at, int count) {
    DWORD value = 0;
    for (int i = count - 1; i >= 0; --i) {
        const std::size_t index = at + static_cast<std::size_t>(i);
        value = value << 8 | (index < bytes.size() ? bytes[index] : 0u);
    }
    return value;
}

bool ReadHeader(FileBytes bytes, Header& header) {
    constexpr std::size_t start = sizeof(BITMAPFILEHEADER);
    const std::size_t size = Number(bytes, start, 4);
    const bool isCore = size == 12;
    if (bytes.size() < start + size || (!isCore && size < 40) || size > 1024) {
        return false;
    }
    header.pixels = Number(bytes, 10, 4);
    DWORD used = 0;
    std::size_t table = start + size;
    if (isCore) {
        header.width = Number(bytes, start + 4, 2);
        header.height = Number(bytes, start + 6, 2);
        header.bits = static_cast<int>(Number(bytes, start + 10, 2));
    } else {
        header.width = static_cast<LONG>(Number(bytes, start + 4, 4));
        header.height = static_cast<LONG>(Number(bytes, start + 8, 4));
        header.bits = static_cast<int>(Number(bytes, start + 14, 2));
        header.compression = Number(bytes, start + 16, 4);
        used = Number(bytes, start + 32, 4);
    }
    header.isTopDown = header.height < 0;
    header.height = std::abs(header.height);
    if (header.width < 1 || header.height < 1 || header.width > Picture::longestSide ||
        header.height > Picture::longestSide) {
        return false;
    }
    const bool hasMasks = header.compression == BI_BITFIELDS || header.compression == alphaBitFields;
    if (hasMasks) {
        if (header.bits != 16 && header.bits != 32) {
            return false;
        }
        const int count = size >= 56 || header.compression == alphaBitFields ? 4 : 3;
        for (int i = 0; i < count; ++i) {
            header.masks[i] = Number(bytes, start + 40 + static_cast<std::size_t>(i) * 4, 4);
        }
    } else if (header.bits == 16) {
        header.masks[0] = 0x7C00;
        header.masks[1] = 0x03E0;
        header.masks[2] = 0x001F;
    }
    if (header.bits <= 8) {
        if (header.bits != 1 && header.bits != 4 && header.bits != 8) {
            return false;
        }
        const DWORD most = 1u << header.bits;
        const DWORD count = used == 0 || used > most ? most : used;
        for (DWORD i = 0; i < count; ++i) {
            header.palette.push_back(0xFF000000 | Number(bytes, table, 3));
            table += isCore ? 3 : 4;
        }
    }
    const bool isKnown = header.compression == BI_RGB || hasMasks ||
                         (header.compression == runs8 && header.bits == 8 && !header.isTopDown) ||
                         (header.compression == runs4 && header.bits == 4 && !header.isTopDown);
    const bool isDepth = header.bits <= 8 || header.bits == 16 || header.bits == 24 || header.bits == 32;
    return isKnown && isDepth && header.pixels >= start + size && header.pixels <= bytes.size();
}

// The bits under a mask, widened to 8.
DWORD Channel(DWORD pixel, DWORD mask) {
    if (mask == 0) {
        return 0;
    }
    const int shift = std::countr_zero(mask);
    const std::uint64_t most = mask >> shift;
    return static_cast<DWORD>(((pixel & mask) >> shift) * std::uint64_t{255} / most);
}

int FormatOf(const Header& header) {
    if (header.bits <= 8) {
        return PixelFormat8bppIndexed;
    }
    return header.bits == 24 ? PixelFormat24bppRGB : header.masks[3] != 0 ? PixelFormat32bppARGB : PixelFormat32bppRGB;
}

void ConvertRow(const Header& header, FileBytes row, unsigned char* target) {
    const auto width = static_cast<std::size_t>(header.width);
    for (std::size_t x = 0; x < width; ++x) {
        if (header.bits <= 8) {
            const auto perByte = static_cast<std::size_t>(8 / header.bits);
            const auto shift = static_cast<int>(perByte - 1 - x % perByte) * header.bits;
            target[x] = static_cast<unsigned char>((row[x / perByte] >> shift) & ((1 << header.bits) - 1));
        } else if (header.masks[0] == 0 && header.masks[1] == 0 && header.masks[2] == 0) {
            std::memcpy(target, row.data(), width * static_cast<std::size_t>(header.bits / 8));
            return;
        } else {
            const auto bytes = static_cast<std::size_t>(header.bits / 8);
            const DWORD pixel = Number(row, x * bytes, header.bits / 8);
            const DWORD argb = Channel(pixel, header.masks[3]) << 24 | Channel(pixel, header.masks[0]) << 16 |
                               Channel(pixel, header.masks[1]) << 8 | Channel(pixel, header.masks[2]);
            std::memcpy(target + x * 4, &argb, sizeof(argb));
        }
    }
}

// Pixels that no run names stay 0. Runs may not leave the picture.
bool ReadRuns(const Header& header, FileBytes bytes, Picture& picture) {
    std::size_t at = header.pixels;
    std::int64_t x = 0, y = header.height - 1;
    const auto index = [&](unsigned pair, unsigned i) {
        return static_cast<unsigned char>(header.bits == 8 ? pair : i % 2 == 0 ? pair >> 4 : pair & 15);
    };
    while (at + 1 < bytes.size()) {
        const unsigned count = bytes[at], value = bytes[at + 1];
        at += 2;
        if (count > 0 || value > 2) {
            const unsigned length = count > 0 ? count : value;
            if (y < 0 || length > header.width - x) {
                return false;
            }
            unsigned char* const target = picture.Row(static_cast<int>(y)) + x;
            std::size_t taken = 0;
            if (count == 0) {
                taken = header.bits == 8 ? length : (length + 1) / 2;
                if (taken > bytes.size() - at) {
                    return false;
                }
            }
            for (unsigned i = 0; i < length; ++i) {
                target[i] = index(count > 0 ? value : bytes[at + (header.bits == 8 ? i : i / 2)], i);
            }
            x += length;
            at += taken + taken % 2;
        } else if (value == 0) {
            x = 0;
            --y;
        } else if (value == 1) {
            return true;
        } else {
            x += Number(bytes, at, 1);
            y -= Number(bytes, at + 1, 1);
            at += 2;
            if (x > header.width) {
                return false;
            }
        }
    }
    return false;   // no end of the picture
}

}   // namespace

std::unique_ptr<Picture> DecodeBmp(FileBytes bytes) {
    Header header;
    if (!ReadHeader(bytes, header)) {
        return nullptr;
    }
    const bool isRuns = header.compression == runs8 || header.compression == runs4;
    const std::int64_t rowBytes = (header.width * header.bits + 31) / 32 * 4;
    const auto left = static_cast<std::int64_t>(bytes.size() - header.pixels);
    if (!isRuns && rowBytes * header.height > left) {
        return nullptr;
    }
    if (isRuns && header.width * header.height / 4096 > left) {   // two bytes name 255 pixels, or skip some rows
        return nullptr;
    }
    auto picture =
        Picture::Make(static_cast<int>(header.width), static_cast<int>(header.height), 0, FormatOf(header), nullptr);
    if (!picture) {
        return nullptr;
    }
    if (header.bits <= 8) {
        picture->Palette() = header.palette;
    }
    if (isRuns) {
        return ReadRuns(header, bytes, *picture) ? std::move(picture) : nullptr;
    }
    for (std::int64_t y = 0; y < header.height; ++y) {
        const std::int64_t from = header.isTopDown ? y : header.height - 1 - y;
        const auto offset = header.pixels + static_cast<std::size_t>(from * rowBytes);
        ConvertRow(header, bytes.subspan(offset, static_cast<std::size_t>(rowBytes)),
                   picture->Row(static_cast<int>(y)));
    }
    return picture;
}

}   // namespace rastel::platform::gdip

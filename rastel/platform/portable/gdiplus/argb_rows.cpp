#include "rastel/platform/portable/gdiplus/argb_rows.h"

#include <algorithm>
#include <cstring>

namespace rastel::platform::gdip {

namespace {

DWORD Premultiplied(DWORD argb) {
    const DWORD alpha = argb >> 24;
    const auto channel = [&](int shift) { return ((((argb >> shift) & 0xFF) * alpha + 127) / 255) << shift; };
    return alpha << 24 | channel(16) | channel(8) | channel(0);
}

DWORD Straight(DWORD premultiplied) {
    const DWORD alpha = premultiplied >> 24;
    if (alpha == 0 || alpha == 255) {
        return alpha == 0 ? 0 : premultiplied;
    }
    const auto channel = [&](int shift) {
        return std::min<DWORD>(255, (((premultiplied >> shift) & 0xFF) * 255 + alpha / 2) / alpha) << shift;
    };
    return alpha << 24 | channel(16) | channel(8) | channel(0);
}

int Distance(DWORD first, DWORD second) {
    int sum = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const int difference = static_cast<int>((first >> shift) & 0xFF) - static_cast<int>((second >> shift) & 0xFF);
        sum += difference * difference;
    }
    return sum;
}

unsigned char Nearest(std::span<const DWORD> palette, DWORD argb) {
    std::size_t best = 0;
    int least = INT32_MAX;
    for (std::size_t i = 0; i < palette.size() && least > 0; ++i) {
        const int distance = Distance(palette[i], argb);
        if (distance < least) {
            least = distance;
            best = i;
        }
    }
    return static_cast<unsigned char>(best);
}

DWORD LoadWord(const unsigned char* pixel) {
    DWORD word;
    std::memcpy(&word, pixel, sizeof(word));
    return word;
}

void StoreWord(unsigned char* pixel, DWORD word) {
    std::memcpy(pixel, &word, sizeof(word));
}

}   // namespace

int BytesPerPixel(int format) {
    switch (format) {
        case PixelFormat8bppIndexed:
            return 1;
        case PixelFormat24bppRGB:
            return 3;
        case PixelFormat32bppRGB:
        case PixelFormat32bppARGB:
        case PixelFormat32bppPARGB:
            return 4;
        default:
            return 0;
    }
}

bool IsKnownFormat(int format) {
    return BytesPerPixel(format) != 0;
}

bool HasAlpha(int format) {
    return format == PixelFormat32bppARGB || format == PixelFormat32bppPARGB;
}

void LoadArgb(int format, const unsigned char* row, int x, int count, std::span<const DWORD> palette, DWORD* argb) {
    const unsigned char* pixel = row + static_cast<std::ptrdiff_t>(x) * BytesPerPixel(format);
    const DWORD* const end = argb + count;
    switch (format) {
        case PixelFormat8bppIndexed:
            for (; argb != end; ++argb, ++pixel) {
                *argb = *pixel < palette.size() ? palette[*pixel] : 0xFF000000;
            }
            break;
        case PixelFormat24bppRGB:
            for (; argb != end; ++argb, pixel += 3) {
                *argb = 0xFF000000 | static_cast<DWORD>(pixel[2]) << 16 | static_cast<DWORD>(pixel[1]) << 8 | pixel[0];
            }
            break;
        case PixelFormat32bppRGB:
            for (; argb != end; ++argb, pixel += 4) {
                *argb = 0xFF000000 | LoadWord(pixel);
            }
            break;
        case PixelFormat32bppPARGB:
            for (; argb != end; ++argb, pixel += 4) {
                *argb = Straight(LoadWord(pixel));
            }
            break;
        default:
            std::memcpy(argb, pixel, static_cast<std::size_t>(count) * 4);
            break;
    }
}

void StoreArgb(int format, unsigned char* row, int x, int count, std::span<const DWORD> palette, const DWORD* argb) {
    unsigned char* pixel = row + static_cast<std::ptrdiff_t>(x) * BytesPerPixel(format);
    const DWORD* const end = argb + count;
    switch (format) {
        case PixelFormat8bppIndexed: {
            DWORD last = 0;
            unsigned char index = Nearest(palette, last);
            for (; argb != end; ++argb, ++pixel) {
                if (*argb != last) {
                    last = *argb;
                    index = Nearest(palette, last);
                }
                *pixel = index;
            }
            break;
        }
        case PixelFormat24bppRGB:
            for (; argb != end; ++argb, pixel += 3) {
                pixel[0] = static_cast<unsigned char>(*argb);
                pixel[1] = static_cast<unsigned char>(*argb >> 8);
                pixel[2] = static_cast<unsigned char>(*argb >> 16);
            }
            break;
        case PixelFormat32bppRGB:
            for (; argb != end; ++argb, pixel += 4) {
                StoreWord(pixel, (*argb & 0x00FFFFFF) | (LoadWord(pixel) & 0xFF000000));
            }
            break;
        case PixelFormat32bppPARGB:
            for (; argb != end; ++argb, pixel += 4) {
                StoreWord(pixel, Premultiplied(*argb));
            }
            break;
        default:
            std::memcpy(pixel, argb, static_cast<std::size_t>(count) * 4);
            break;
    }
}

}   // namespace rastel::platform::gdip

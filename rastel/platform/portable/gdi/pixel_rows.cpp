#include "rastel/platform/portable/gdi/pixel_rows.h"

#include <algorithm>
#include <cstring>

namespace rastel::platform {

namespace {

template <typename Value>
DWORD LoadAt(const unsigned char* row, int x) {
    Value value;
    std::memcpy(&value, row + static_cast<std::ptrdiff_t>(x) * static_cast<std::ptrdiff_t>(sizeof(value)),
                sizeof(value));
    return value;
}

template <typename Value>
void StoreAt(unsigned char* row, int x, DWORD value) {
    const Value narrow = static_cast<Value>(value);
    std::memcpy(row + static_cast<std::ptrdiff_t>(x) * static_cast<std::ptrdiff_t>(sizeof(narrow)), &narrow,
                sizeof(narrow));
}

DWORD Load24(const unsigned char* pixel) {
    return pixel[0] | (DWORD{pixel[1]} << 8) | (DWORD{pixel[2]} << 16);
}

void Store24(unsigned char* pixel, DWORD value) {
    pixel[0] = static_cast<BYTE>(value);
    pixel[1] = static_cast<BYTE>(value >> 8);
    pixel[2] = static_cast<BYTE>(value >> 16);
}

// Bits of a byte that hold the pixel, counted from the highest.
void StoreBits(unsigned char* byte, int shift, DWORD mask, DWORD value) {
    *byte = static_cast<BYTE>((*byte & ~(mask << shift)) | ((value & mask) << shift));
}

}   // namespace

DWORD LoadPixel(const unsigned char* row, int bitsPerPixel, int x) {
    switch (bitsPerPixel) {
        case 1:
            return (row[x >> 3] >> (7 - (x & 7))) & 1u;
        case 4:
            return (row[x >> 1] >> ((x & 1) != 0 ? 0 : 4)) & 15u;
        case 8:
            return row[x];
        case 16:
            return LoadAt<std::uint16_t>(row, x);
        case 24:
            return Load24(row + static_cast<std::ptrdiff_t>(x) * 3);
        default:
            return LoadAt<std::uint32_t>(row, x);
    }
}

void StorePixel(unsigned char* row, int bitsPerPixel, int x, DWORD value) {
    switch (bitsPerPixel) {
        case 1:
            StoreBits(row + (x >> 3), 7 - (x & 7), 1, value);
            break;
        case 4:
            StoreBits(row + (x >> 1), (x & 1) != 0 ? 0 : 4, 15, value);
            break;
        case 8:
            row[x] = static_cast<BYTE>(value);
            break;
        case 16:
            StoreAt<std::uint16_t>(row, x, value);
            break;
        case 24:
            Store24(row + static_cast<std::ptrdiff_t>(x) * 3, value);
            break;
        default:
            StoreAt<std::uint32_t>(row, x, value);
            break;
    }
}

void LoadRow(const unsigned char* row, int bitsPerPixel, int x, int count, DWORD* values) {
    if (bitsPerPixel >= 8) {
        row += ByteOffset(bitsPerPixel, x);
    }
    switch (bitsPerPixel) {
        case 8:
            for (int i = 0; i < count; ++i) {
                values[i] = row[i];
            }
            break;
        case 16:
            for (int i = 0; i < count; ++i) {
                values[i] = LoadAt<std::uint16_t>(row, i);
            }
            break;
        case 24:
            for (int i = 0; i < count; ++i, row += 3) {
                values[i] = Load24(row);
            }
            break;
        case 32:
            if (count > 0) {
                std::memcpy(values, row, static_cast<std::size_t>(count) * 4);
            }
            break;
        default:
            for (int i = 0; i < count; ++i) {
                values[i] = LoadPixel(row, bitsPerPixel, x + i);
            }
            break;
    }
}

void StoreRow(unsigned char* row, int bitsPerPixel, int x, int count, const DWORD* values) {
    if (bitsPerPixel >= 8) {
        row += ByteOffset(bitsPerPixel, x);
    }
    switch (bitsPerPixel) {
        case 8:
            for (int i = 0; i < count; ++i) {
                row[i] = static_cast<BYTE>(values[i]);
            }
            break;
        case 16:
            for (int i = 0; i < count; ++i) {
                StoreAt<std::uint16_t>(row, i, values[i]);
            }
            break;
        case 24:
            for (int i = 0; i < count; ++i, row += 3) {
                Store24(row, values[i]);
            }
            break;
        case 32:
            if (count > 0) {
                std::memcpy(row, values, static_cast<std::size_t>(count) * 4);
            }
            break;
        default:
            for (int i = 0; i < count; ++i) {
                StorePixel(row, bitsPerPixel, x + i, values[i]);
            }
            break;
    }
}

void FillPixels(unsigned char* row, int bitsPerPixel, int x, int count, DWORD value) {
    if (count <= 0) {
        return;
    }
    if (bitsPerPixel < 8) {
        const int perByte = 8 / bitsPerPixel;
        while (count > 0 && x % perByte != 0) {
            StorePixel(row, bitsPerPixel, x++, value);
            --count;
        }
        const DWORD wide = bitsPerPixel == 1 ? (value & 1) * 0xFF : (value & 15) * 0x11;
        const int bytes = count / perByte;
        std::memset(row + x / perByte, static_cast<int>(wide), static_cast<std::size_t>(bytes));
        x += bytes * perByte;
        for (count -= bytes * perByte; count > 0; --count) {
            StorePixel(row, bitsPerPixel, x++, value);
        }
        return;
    }
    row += ByteOffset(bitsPerPixel, x);
    const DWORD low = value & 0xFF;
    const bool sameBytes = bitsPerPixel == 8 || (value & (bitsPerPixel == 16 ? 0xFFFFu : 0xFFFFFFu)) ==
                                                    low * (bitsPerPixel == 16 ? 0x101u : 0x10101u);
    if (sameBytes && (bitsPerPixel != 32 || value >> 24 == low)) {
        std::memset(row, static_cast<int>(low), static_cast<std::size_t>(ByteOffset(bitsPerPixel, count)));
        return;
    }
    switch (bitsPerPixel) {
        case 16:
            for (int i = 0; i < count; ++i) {
                StoreAt<std::uint16_t>(row, i, value);
            }
            break;
        case 24:
            for (int i = 0; i < count; ++i, row += 3) {
                Store24(row, value);
            }
            break;
        default:
            for (int i = 0; i < count; ++i) {
                StoreAt<std::uint32_t>(row, i, value);
            }
            break;
    }
}

}   // namespace rastel::platform

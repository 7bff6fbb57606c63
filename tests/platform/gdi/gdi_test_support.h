// What the GDI tests share: sections of any format with seeded pixels, and pixels read and written by the book.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "rastel/platform/gdi.h"

namespace rastel::test {

struct Format {
    const char* name;
    int depth;
    DWORD masks[3];   // red, green, blue; 0: indexed
};

inline constexpr Format kFormats[] = {
    {"mono table", 1, {0, 0, 0}},
    {"16 colours", 4, {0, 0, 0}},
    {"256 colours", 8, {0, 0, 0}},
    {"5-5-5", 16, {0x7C00, 0x03E0, 0x001F}},
    {"5-6-5", 16, {0xF800, 0x07E0, 0x001F}},
    {"4-4-4 mixed", 16, {0x000F, 0x0F00, 0x00F0}},
    {"24", 24, {0xFF0000, 0x00FF00, 0x0000FF}},
    {"32", 32, {0xFF0000, 0x00FF00, 0x0000FF}},
    {"32 reversed", 32, {0x0000FF, 0x00FF00, 0xFF0000}},
    {"10 bits a channel", 32, {0x3FF00000, 0x000FFC00, 0x000003FF}},
};

enum class Rows { TopDown, BottomUp };

inline std::mt19937& Random() {
    static std::mt19937 engine(20240607);
    return engine;
}

inline int RandomIn(int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(Random());
}

// A header with room for masks or colours behind it.
class InfoBlock {
public:
    InfoBlock(int width, int height, const Format& format, Rows rows = Rows::TopDown) : bytes_(40 + 4 * 256) {
        BITMAPINFOHEADER& header = Info()->bmiHeader;
        header.biSize = sizeof(header);
        header.biWidth = width;
        header.biHeight = rows == Rows::TopDown ? -height : height;
        header.biPlanes = 1;
        header.biBitCount = static_cast<WORD>(format.depth);
        const bool usual = format.masks[0] == (format.depth == 16 ? 0x7C00u : 0xFF0000u) &&
                           format.masks[1] == (format.depth == 16 ? 0x03E0u : 0x00FF00u);
        if (format.depth > 8 && !usual) {
            header.biCompression = BI_BITFIELDS;
            std::memcpy(Info()->bmiColors, format.masks, sizeof(format.masks));
        }
    }
    BITMAPINFO* Info() { return reinterpret_cast<BITMAPINFO*>(bytes_.data()); }
    RGBQUAD* Colors() { return Info()->bmiColors; }

private:
    std::vector<unsigned char> bytes_;
};

// A DIB section selected in a context of its own.
class Section {
public:
    Section(int width, int height, const Format& format, Rows rows = Rows::TopDown)
        : width_(width), height_(height), format_(format), rows_(rows), dc_(CreateCompatibleDC(nullptr)) {
        InfoBlock info(width, height, format, rows);
        if (format.depth <= 8) {
            colors_.resize(std::size_t{1} << format.depth);
            std::mt19937 fixed(static_cast<unsigned>(format.depth));
            for (RGBQUAD& color : colors_) {
                color = {static_cast<BYTE>(fixed()), static_cast<BYTE>(fixed()), static_cast<BYTE>(fixed()), 0};
            }
            std::memcpy(info.Colors(), colors_.data(), colors_.size() * sizeof(RGBQUAD));
        }
        void* bits = nullptr;
        bitmap_ = CreateDIBSection(dc_, info.Info(), DIB_RGB_COLORS, &bits, nullptr, 0);
        bits_ = static_cast<unsigned char*>(bits);
        previous_ = SelectObject(dc_, bitmap_);
        EXPECT_NE(bitmap_, nullptr);
        EXPECT_NE(previous_, nullptr);
    }
    ~Section() {
        SelectObject(dc_, previous_);
        DeleteObject(bitmap_);
        DeleteDC(dc_);
    }
    Section(const Section&) = delete;
    Section& operator=(const Section&) = delete;

    HDC Dc() const { return dc_; }
    HBITMAP Bitmap() const { return bitmap_; }
    unsigned char* Bits() const { return bits_; }
    int Width() const { return width_; }
    int Height() const { return height_; }
    const Format& GetFormat() const { return format_; }
    std::vector<RGBQUAD>& Colors() { return colors_; }
    int Pitch() const { return (width_ * format_.depth + 31) / 32 * 4; }
    std::size_t Bytes() const { return static_cast<std::size_t>(Pitch()) * static_cast<std::size_t>(height_); }
    std::vector<unsigned char> Copy() const { return {bits_, bits_ + Bytes()}; }
    void Load(const std::vector<unsigned char>& bytes) { std::memcpy(bits_, bytes.data(), Bytes()); }

    // 0x00 and 0xFF are far likelier than chance: that is where arithmetic breaks.
    void Randomize() {
        for (std::size_t i = 0; i < Bytes(); ++i) {
            const auto dice = Random()() % 8;
            bits_[i] = dice == 0 ? 0 : dice == 1 ? 0xFF : static_cast<unsigned char>(Random()());
        }
    }

    DWORD Raw(int x, int y) const {
        const unsigned char* row = RowAt(y);
        DWORD value = 0;
        if (format_.depth < 8) {
            for (int bit = 0; bit < format_.depth; ++bit) {
                const int at = x * format_.depth + bit;
                value = (value << 1) | ((row[at / 8] >> (7 - at % 8)) & 1u);
            }
            return value;
        }
        for (int byte = format_.depth / 8 - 1; byte >= 0; --byte) {
            value = (value << 8) | row[x * (format_.depth / 8) + byte];
        }
        return value;
    }

    COLORREF ColorOf(DWORD raw) const {
        if (format_.depth <= 8) {
            const RGBQUAD& quad = colors_[raw];
            return RGB(quad.rgbRed, quad.rgbGreen, quad.rgbBlue);
        }
        int channels[3];
        for (int i = 0; i < 3; ++i) {
            const DWORD mask = format_.masks[i];
            const int low = __builtin_ctz(mask);
            const int bits = __builtin_popcount(mask);
            // The bits again and again, until 8 are full.
            const DWORD channel = (raw & mask) >> low;
            int value = 0;
            for (int k = 0; k < 8; ++k) {
                value = value * 2 + static_cast<int>((channel >> (bits - 1 - k % bits)) & 1);
            }
            channels[i] = value;
        }
        return RGB(channels[0], channels[1], channels[2]);
    }

    DWORD RawOf(COLORREF color) const {
        const int wanted[3] = {GetRValue(color), GetGValue(color), GetBValue(color)};
        if (format_.depth <= 8) {
            DWORD best = 0;
            int least = INT32_MAX;
            for (DWORD i = 0; i < colors_.size(); ++i) {
                const int red = colors_[i].rgbRed - wanted[0];
                const int green = colors_[i].rgbGreen - wanted[1];
                const int blue = colors_[i].rgbBlue - wanted[2];
                if (red * red + green * green + blue * blue < least) {
                    least = red * red + green * green + blue * blue;
                    best = i;
                }
            }
            return best;
        }
        DWORD raw = 0;
        for (int i = 0; i < 3; ++i) {
            const int low = __builtin_ctz(format_.masks[i]);
            const int bits = __builtin_popcount(format_.masks[i]);
            const auto channel = static_cast<DWORD>(wanted[i]);
            raw |= (bits > 8 ? channel << (bits - 8) : channel >> (8 - bits)) << low;
        }
        return raw;
    }

    COLORREF Color(int x, int y) const { return ColorOf(Raw(x, y)); }

private:
    const unsigned char* RowAt(int y) const {
        return bits_ + static_cast<std::ptrdiff_t>(rows_ == Rows::TopDown ? y : height_ - 1 - y) * Pitch();
    }

    int width_;
    int height_;
    Format format_;
    Rows rows_;
    HDC dc_;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ previous_ = nullptr;
    unsigned char* bits_ = nullptr;
    std::vector<RGBQUAD> colors_;
};

inline const Format& Plain32() {
    return kFormats[7];
}

}   // namespace rastel::test

// A picture to draw text into and fonts that are the same on every machine.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <string>
#include <vector>

#include "rastel/platform/gdi.h"
#include "rastel/platform/portable/gdi/font_files.h"

namespace rastel::test {

inline constexpr const wchar_t* kSans = L"Rastel Test Sans";
inline constexpr const wchar_t* kMono = L"Rastel Test Mono";

// The two fonts of tests/media and no other one.
class TextTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        platform::UseSystemFonts(false);
        platform::RemoveAddedFontFiles();
        ASSERT_TRUE(platform::AddFontFile(RASTEL_TEST_MEDIA "/rastel-test-sans.ttf"));
        ASSERT_TRUE(platform::AddFontFile(RASTEL_TEST_MEDIA "/rastel-test-mono.ttf"));
    }
};

inline LOGFONTW FontOf(LONG height, const wchar_t* face = kSans) {
    LOGFONTW font = {};
    font.lfHeight = height;
    std::wcsncpy(font.lfFaceName, face, LF_FACESIZE - 1);
    return font;
}

// A context on a bitmap of its own; top row first.
class Canvas {
public:
    Canvas(int width, int height, WORD bitsPerPixel = 32) : width_(width), height_(height) {
        struct {
            BITMAPINFOHEADER header;
            RGBQUAD colors[256];
        } info = {};
        info.header.biSize = sizeof(info.header);
        info.header.biWidth = width;
        info.header.biHeight = -height;
        info.header.biPlanes = 1;
        info.header.biBitCount = bitsPerPixel;
        const int colorCount = bitsPerPixel <= 8 ? 1 << bitsPerPixel : 0;
        for (int i = 0; i < colorCount; i++) {
            const auto level = static_cast<BYTE>(i * 255 / (colorCount - 1));
            info.colors[i] = RGBQUAD{level, level, level, 0};
        }
        context_ = CreateCompatibleDC(nullptr);
        void* bits = nullptr;
        bitmap_ =
            CreateDIBSection(context_, reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits, nullptr, 0);
        bits_ = static_cast<DWORD*>(bits);
        bitmapBefore_ = SelectObject(context_, bitmap_);
    }
    ~Canvas() {
        ReleaseFont();
        SelectObject(context_, bitmapBefore_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    HDC Dc() const { return context_; }

    void Use(const LOGFONTW& font) {
        ReleaseFont();
        font_ = CreateFontIndirectW(&font);
        ASSERT_NE(font_, nullptr);
        fontBefore_ = SelectObject(context_, font_);
        ASSERT_NE(fontBefore_, nullptr);
    }

    // 32 bits a pixel only.
    void Fill(DWORD pixel) {
        std::fill_n(bits_, static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), pixel);
    }
    DWORD At(int x, int y) const { return bits_[y * width_ + x]; }
    std::vector<DWORD> Pixels() const {
        return {bits_, bits_ + static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)};
    }
    std::vector<DWORD> Crop(const RECT& area) const {
        std::vector<DWORD> pixels;
        for (int y = area.top; y < area.bottom; y++) {
            for (int x = area.left; x < area.right; x++) {
                pixels.push_back(At(x, y));
            }
        }
        return pixels;
    }

    // The smallest rectangle round all pixels that differ from `background`; all zero when there are none.
    RECT Inked(DWORD background) const {
        RECT box = {width_, height_, 0, 0};
        for (int y = 0; y < height_; y++) {
            for (int x = 0; x < width_; x++) {
                if (At(x, y) != background) {
                    box.left = box.left < x ? box.left : x;
                    box.top = box.top < y ? box.top : y;
                    box.right = box.right > x ? box.right : x + 1;
                    box.bottom = y + 1;
                }
            }
        }
        return box.bottom ? box : RECT{};
    }

private:
    void ReleaseFont() {
        if (font_) {
            SelectObject(context_, fontBefore_);
            DeleteObject(font_);
            font_ = nullptr;
        }
    }

    int width_;
    int height_;
    HDC context_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HFONT font_ = nullptr;
    HGDIOBJ bitmapBefore_ = nullptr;
    HGDIOBJ fontBefore_ = nullptr;
    DWORD* bits_ = nullptr;
};

inline BOOL Write(Canvas& canvas, int x, int y, const std::wstring& text) {
    return TextOutW(canvas.Dc(), x, y, text.c_str(), static_cast<int>(text.size()));
}

inline SIZE ExtentOf(HDC context, const std::wstring& text) {
    SIZE size = {-1, -1};
    EXPECT_TRUE(GetTextExtentPoint32W(context, text.c_str(), static_cast<int>(text.size()), &size));
    return size;
}

}   // namespace rastel::test

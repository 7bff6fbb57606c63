// Image files of GDI+: what is written comes back, and no broken file harms anything.
#include <gtest/gtest.h>

#include <cstdio>
// libjpeg's header needs the above.
#include <jpeglib.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <vector>

#include "rastel/platform/gdiplus.h"

namespace {

using FileBytes = std::vector<unsigned char>;
using Gdiplus::Bitmap;
using Gdiplus::Color;

class GdiplusFiles : public ::testing::Test {
protected:
    ~GdiplusFiles() override { std::filesystem::remove(path); }

    std::unique_ptr<Bitmap> Decoded(const FileBytes& bytes) {
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        std::unique_ptr<Bitmap> bitmap(Bitmap::FromFile(path.wstring().c_str()));
        if (bitmap->GetLastStatus() != Gdiplus::Ok) {
            EXPECT_EQ(bitmap->GetWidth(), 0u);
            return nullptr;
        }
        return bitmap;
    }
    FileBytes Written() const {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // Cut short anywhere, and with any byte bent: refused or decoded, with nothing read beyond the file.
    void BendAndCut(const FileBytes& good, std::size_t step) {
        for (std::size_t length = 0; length < good.size(); length += step) {
            Decoded(FileBytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length)));
        }
        std::minstd_rand random(7);
        for (std::size_t i = 0; i < good.size(); i += step) {
            FileBytes bent = good;
            bent[i] = static_cast<unsigned char>(random());
            Decoded(bent);
        }
    }

    const std::filesystem::path path = std::filesystem::path(::testing::TempDir()) / "rastel-image-file-test";
};

DWORD At(Bitmap& bitmap, int x, int y) {
    Color color;
    EXPECT_EQ(bitmap.GetPixel(x, y, &color), Gdiplus::Ok);
    return color.GetValue();
}

void Append(FileBytes& bytes, DWORD value, int count) {
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<unsigned char>(i < 4 ? value >> 8 * i : 0u));
    }
}

FileBytes Bmp(int width, int height, int bits, DWORD compression, const std::vector<DWORD>& table,
              const FileBytes& pixels) {
    FileBytes bytes{'B', 'M'};
    const DWORD offset = 54 + static_cast<DWORD>(table.size()) * 4;
    Append(bytes, offset + static_cast<DWORD>(pixels.size()), 4);
    Append(bytes, 0, 4);
    Append(bytes, offset, 4);
    Append(bytes, 40, 4);
    Append(bytes, static_cast<DWORD>(width), 4);
    Append(bytes, static_cast<DWORD>(height), 4);
    Append(bytes, 1, 2);
    Append(bytes, static_cast<DWORD>(bits), 2);
    Append(bytes, compression, 4);
    Append(bytes, 0, 12);
    Append(bytes, bits <= 8 ? static_cast<DWORD>(table.size()) : 0, 4);
    Append(bytes, 0, 4);
    for (const DWORD entry : table) {
        Append(bytes, entry, 4);
    }
    bytes.insert(bytes.end(), pixels.begin(), pixels.end());
    return bytes;
}

FileBytes Jpeg(int width, int height, DWORD argb) {
    jpeg_compress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    unsigned char* memory = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&jpeg, &memory, &size);
    jpeg.image_width = static_cast<JDIMENSION>(width);
    jpeg.image_height = static_cast<JDIMENSION>(height);
    jpeg.input_components = 3;
    jpeg.in_color_space = JCS_RGB;
    jpeg_set_defaults(&jpeg);
    jpeg_start_compress(&jpeg, TRUE);
    FileBytes row;
    for (int x = 0; x < width; ++x) {
        Append(row, (argb & 0xFF) << 16 | (argb & 0xFF00) | (argb >> 16 & 0xFF), 3);
    }
    for (int y = 0; y < height; ++y) {
        unsigned char* rows = row.data();
        jpeg_write_scanlines(&jpeg, &rows, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    const FileBytes bytes(memory, memory + size);
    std::free(memory);
    return bytes;
}

CLSID PngEncoder() {
    UINT count = 0, size = 0;
    Gdiplus::GetImageEncodersSize(&count, &size);
    std::vector<unsigned char> block(size);
    auto* const encoders = reinterpret_cast<Gdiplus::ImageCodecInfo*>(block.data());
    EXPECT_EQ(Gdiplus::GetImageEncoders(count, size, encoders), Gdiplus::Ok);
    for (UINT i = 0; i < count; ++i) {
        if (std::wcscmp(encoders[i].MimeType, L"image/png") == 0) {
            return encoders[i].Clsid;
        }
    }
    ADD_FAILURE() << "no PNG encoder";
    return {};
}

TEST_F(GdiplusFiles, PngKeepsEveryStraightPixel) {
    const CLSID png = PngEncoder();
    Bitmap bitmap(17, 9, PixelFormat32bppARGB), opaque(5, 3, PixelFormat24bppRGB);
    for (int i = 0; i < 17 * 9; ++i) {
        bitmap.SetPixel(i % 17, i / 17, Color(static_cast<DWORD>(i) * 0x01F3A2C5));   // low alphas, high colours
    }
    opaque.SetPixel(4, 2, Color(0xFF123456));
    const std::wstring name = path.wstring();
    ASSERT_EQ(opaque.Save(name.c_str(), &png), Gdiplus::Ok);
    EXPECT_EQ(At(*Decoded(Written()), 4, 2), 0xFF123456u);
    ASSERT_EQ(bitmap.Save(name.c_str(), &png), Gdiplus::Ok);
    const FileBytes good = Written();
    const auto back = Decoded(good);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->GetPixelFormat(), PixelFormat32bppARGB);
    for (int i = 0; i < 17 * 9; ++i) {
        ASSERT_EQ(At(*back, i % 17, i / 17), static_cast<DWORD>(i) * 0x01F3A2C5);
    }
    BendAndCut(good, 3);
    FileBytes enormous = good;   // 65535 by 65535, with a chunk's sum that libpng takes as broken or not
    std::memset(enormous.data() + 16, 0, 8);
    enormous[18] = enormous[19] = enormous[22] = enormous[23] = 0xFF;
    EXPECT_FALSE(Decoded(enormous));

    EXPECT_NE(bitmap.Save(L"/no/such/folder/picture.png", &png), Gdiplus::Ok);
    EXPECT_EQ(bitmap.Save(name.c_str(), nullptr), Gdiplus::InvalidParameter);
    EXPECT_EQ(Bitmap(L"/no/such/file").GetLastStatus(), Gdiplus::FileNotFound);
    EXPECT_NE(Bitmap(L"/").GetLastStatus(), Gdiplus::Ok);
}

TEST_F(GdiplusFiles, JpegComesWithItsColours) {
    const FileBytes good = Jpeg(33, 20, 0xFFC86432);
    const auto picture = Decoded(good);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetWidth(), 33u);
    const DWORD middle = At(*picture, 16, 10);
    EXPECT_NEAR(middle >> 16 & 0xFF, 0xC8, 3);
    EXPECT_NEAR(middle & 0xFF, 0x32, 3);
    EXPECT_FALSE(Decoded(FileBytes(good.begin(), good.end() - 8)));
    BendAndCut(good, 5);
}

TEST_F(GdiplusFiles, BmpsOfEveryKind) {
    const std::vector<DWORD> table{0x112233, 0x445566, 0x778899, 0xAABBCC};
    const auto indexed = Decoded(Bmp(3, 2, 4, 0, table, {0x01, 0x20, 0, 0, 0x32, 0x10, 0, 0}));
    ASSERT_TRUE(indexed);
    EXPECT_EQ(indexed->GetPixelFormat(), PixelFormat8bppIndexed);
    EXPECT_EQ(At(*indexed, 0, 0), 0xFFAABBCCu);   // the last row comes first
    EXPECT_EQ(At(*indexed, 2, 1), 0xFF778899u);
    const auto wide = Decoded(Bmp(1, -2, 24, 0, {}, {1, 2, 3, 0, 4, 5, 6, 0}));
    ASSERT_TRUE(wide);
    EXPECT_EQ(At(*wide, 0, 1), 0xFF060504u);
    const auto masked = Decoded(Bmp(2, 1, 16, 3, {0xF800, 0x07E0, 0x001F}, {0x00, 0xF8, 0xFF, 0xFF}));
    ASSERT_TRUE(masked);
    EXPECT_EQ(At(*masked, 0, 0), 0xFFFF0000u);
    EXPECT_EQ(At(*masked, 1, 0), 0xFFFFFFFFu);

    const FileBytes runs{3, 1, 0, 0, 0, 2, 1, 0, 1, 3, 0, 1};   // a run; then one pixel skipped, one drawn
    const auto packed = Decoded(Bmp(4, 2, 8, 1, table, runs));
    ASSERT_TRUE(packed);
    EXPECT_EQ(At(*packed, 2, 1), 0xFF445566u);
    EXPECT_EQ(At(*packed, 1, 0), 0xFFAABBCCu);
    EXPECT_FALSE(Decoded(Bmp(2, 2, 8, 1, table, runs)));   // the run leaves the row
    EXPECT_FALSE(Decoded(Bmp(65535, 65535, 32, 0, {}, {1, 2, 3, 4})));
    EXPECT_FALSE(Decoded(Bmp(INT_MIN, INT_MIN, 32, 0, {}, {1, 2, 3, 4})));
    EXPECT_FALSE(Decoded(Bmp(60000, 60000, 8, 1, table, {0, 1})));   // a promise without pixels
    BendAndCut(Bmp(4, 2, 8, 1, table, runs), 1);
    BendAndCut(Bmp(2, 1, 16, 3, {0xF800, 0x07E0, 0x001F}, {0x00, 0xF8, 0xFF, 0xFF}), 1);
}

}   // namespace

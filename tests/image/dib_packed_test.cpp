// Packed DIBs: where tables end and pixels begin, and blocks shorter than their headers say.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <random>

#include "rastel/image/dib.h"
#include "rastel/platform/kernel.h"
#include "tests/image/icon_bytes.h"

using rastel::test::Append;
using rastel::test::ByteVector;
using winext::CDib;

namespace {

class Block {
public:
    explicit Block(const ByteVector& bytes) : handle_(::GlobalAlloc(GMEM_MOVEABLE, bytes.size())) {
        if (void* const address = ::GlobalLock(handle_)) {
            std::memcpy(address, bytes.data(), bytes.size());
            ::GlobalUnlock(handle_);
        }
    }
    ~Block() { ::GlobalFree(handle_); }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;
    HGLOBAL Handle() const { return handle_; }

private:
    HGLOBAL handle_;
};

// Byte i of all that follows the header is i.
ByteVector Packed(int width, int height, int bits, DWORD colorsUsed, std::size_t behindHeader) {
    ByteVector bytes;
    BITMAPINFOHEADER header = {};
    header.biSize = sizeof(header);
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = static_cast<WORD>(bits);
    header.biClrUsed = colorsUsed;
    Append(bytes, header);
    for (std::size_t i = 0; i < behindHeader; ++i) {
        bytes.push_back(static_cast<BYTE>(i));
    }
    return bytes;
}

int Load(CDib& image, const ByteVector& bytes) {
    const Block block(bytes);
    const int result = image.LoadGlobal(block.Handle());
    EXPECT_EQ(::GlobalUnlock(block.Handle()), FALSE);   // not left locked
    return result;
}

TEST(PackedDib, PixelsBeginBehindTheColoursThatAreUsed) {
    const struct {
        int bits;
        DWORD used;
        int first;   // the first pixel byte's place behind the header
    } cases[] = {{8, 16, 64}, {8, 0, 1024}, {8, 300, 1200}, {4, 0, 64}, {4, 3, 12}, {1, 0, 8}, {24, 7, 0}, {32, 0, 0}};
    for (const auto& c : cases) {
        CDib image;
        const int pitch = (6 * c.bits + 31) / 32 * 4;
        ASSERT_EQ(Load(image, Packed(6, -3, c.bits, c.used, static_cast<std::size_t>(c.first + 3 * pitch))), 1)
            << c.bits << ' ' << c.used;
        EXPECT_EQ(image.IsTopDown(), 1);
        for (int i = 0; i < 3 * pitch; ++i) {
            ASSERT_EQ(image.GetBits()[i], static_cast<BYTE>(c.first + i)) << c.bits << ' ' << c.used;
        }
    }
}

TEST(PackedDib, ColoursGoOnToTheEndOfTheBlockAndAreBlackBeyond) {
    CDib image;
    ASSERT_EQ(Load(image, Packed(10, 8, 8, 16, 64 + 12 * 8)), 1);
    EXPECT_EQ(image.GetColor(15), 0x3C3D3Eu);
    EXPECT_EQ(image.GetColor(16), 0x404142u);   // the first pixels
    EXPECT_EQ(image.GetColor(39), 0x9C9D9Eu);
    for (int i = 40; i < 256; ++i) {
        ASSERT_EQ(image.GetColor(i), 0u) << i;
    }
}

TEST(PackedDib, ABlockThatEndsEarlyKeepsTheOldImage) {
    CDib image;
    ASSERT_EQ(image.Create(3, 3, 24), 1);
    for (const int bits : {1, 8, 16, 32}) {
        const int pitch = (5 * bits + 31) / 32 * 4;
        const auto whole = static_cast<std::size_t>((bits <= 8 ? 4 << bits : 0) + 5 * pitch);
        const ByteVector bytes = Packed(5, 5, bits, 0, whole);
        for (std::size_t size = 1; size < bytes.size(); ++size) {
            ASSERT_EQ(Load(image, {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)}), 0);
        }
        EXPECT_EQ(image.GetWidth(), 3);
    }
    EXPECT_EQ(image.LoadGlobal(nullptr), 0);
}

TEST(PackedDib, WildHeadersAreRefused) {
    CDib image;
    for (const int width : {INT_MIN, -1, 0, 1, 0x8000, INT_MAX}) {
        for (const int height : {INT_MIN, -0x8000, 0, 0x8000, INT_MAX}) {
            for (const int bits : {0, 1, 7, 8, 15, 32, 0xFFFF}) {
                for (const DWORD used : {0u, 1u, 0x3FFFFFFFu, 0xFFFFFFFFu}) {
                    Load(image, Packed(width, height, bits, used, 100));
                    EXPECT_LE(static_cast<std::int64_t>(image.GetPitch()) * image.GetHeight(), 100);
                }
            }
        }
    }
    CDib empty;
    EXPECT_EQ(Load(empty, Packed(0, 0, 0, 0, 100)), 0);
}

TEST(PackedDib, WhatIsPackedIsLoadedAgain) {
    for (const int bits : {16, 24, 32}) {
        for (const int height : {-4, 4}) {
            CDib image, again;
            ASSERT_EQ(image.Create(5, height, bits), 1);
            const std::size_t bytes = static_cast<std::size_t>(image.GetPitch()) * 4;
            for (std::size_t i = 0; i < bytes; ++i) {
                image.GetBits()[i] = static_cast<BYTE>(i * 7);
            }
            const HGLOBAL packed = image.CreateGlobal();
            ASSERT_NE(packed, nullptr);
            EXPECT_GE(::GlobalSize(packed), 40 + bytes);
            EXPECT_EQ(again.LoadGlobal(packed), 1);
            EXPECT_EQ(again.IsTopDown(), height < 0);
            EXPECT_EQ(std::memcmp(again.GetBits(), image.GetBits(), bytes), 0);
            EXPECT_EQ(::GlobalFree(packed), nullptr);
        }
    }
    CDib image;
    EXPECT_EQ(image.CreateGlobal(), nullptr);
    for (const int bits : {1, 4, 8}) {
        ASSERT_EQ(image.Create(5, 5, bits), 1);
        EXPECT_EQ(image.CreateGlobal(), nullptr);
    }
}

TEST(PackedDib, DamagedBlocksDoNoHarm) {
    std::mt19937 random(7);
    for (const int bits : {1, 4, 8, 24, 32}) {
        const ByteVector whole = Packed(9, 7, bits, 0, bits <= 8 ? static_cast<std::size_t>(4 << bits) + 84 : 260);
        for (int round = 0; round < 500; ++round) {
            ByteVector bytes = whole;
            for (auto flips = random() % 4 + 1; flips > 0; --flips) {
                bytes[random() % 40] ^= static_cast<BYTE>(1u << random() % 8);
            }
            bytes.resize(bytes.size() - random() % 3 * (random() % bytes.size()) / 3);
            CDib image;
            if (Load(image, bytes)) {
                ASSERT_LE(static_cast<std::size_t>(image.GetPitch()) * static_cast<std::size_t>(image.GetHeight()),
                          bytes.size());
            }
        }
    }
}

}   // namespace

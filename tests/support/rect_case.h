// The driver of every kernel test: each table that runs here, widths 0 to 70, all alignments of both pointers, odd and
// negative pitches. A kernel brings its literal transcription; the driver brings operands, guards and the comparison.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>

#include "rastel/surface/kernels.h"

namespace rastel::test {

// Rows of bytes in a heap block of their own that ends exactly where the last row ends, so that an address sanitizer
// stops a stray access. The bytes between rows are guards: they count when two operands are compared.
class Operand {
public:
    Operand(int rowBytes, int height, int offset, int pitch)
        : rowBytes_(rowBytes),
          height_(height),
          offset_(offset),
          pitch_(pitch),
          size_(static_cast<std::size_t>(offset + (height - 1) * std::abs(pitch) + rowBytes)),
          block_(new BYTE[size_]) {}
    Operand(const Operand& other) : Operand(other.rowBytes_, other.height_, other.offset_, other.pitch_) {
        std::memcpy(block_.get(), other.block_.get(), size_);
    }
    Operand& operator=(const Operand&) = delete;

    // 0 and 255, where blending breaks, are far likelier than chance; some words are `likelyPixel`.
    void Fill(std::mt19937& random, DWORD likelyPixel = 0) {
        for (std::size_t i = 0; i < size_; ++i) {
            const auto word = random();
            block_[i] = static_cast<BYTE>(word % 4 == 0 ? 0 : word % 4 == 1 ? 255 : word >> 8);
        }
        for (int y = 0; y < height_ && likelyPixel; ++y) {
            for (int i = 0; i + 4 <= rowBytes_; i += 4) {
                if (random() % 2) {
                    std::memcpy(At(i, y), &likelyPixel, random() % 4 ? 4 : 3);
                }
            }
        }
    }

    BYTE* First() const { return At(0, 0); }
    BYTE* At(int byte, int y) const {
        const int row = pitch_ < 0 ? height_ - 1 - y : y;
        return block_.get() + offset_ + row * std::abs(pitch_) + byte;
    }
    DWORD Pixel(int x, int y) const {
        DWORD pixel;
        std::memcpy(&pixel, At(x * 4, y), sizeof(pixel));
        return pixel;
    }
    int Pitch() const { return pitch_; }

    std::string DifferenceFrom(const Operand& expected) const {
        for (std::size_t i = 0; i < size_; ++i) {
            if (block_[i] != expected.block_[i]) {
                const int at = static_cast<int>(i) - offset_;
                const int pitch = std::max(std::abs(pitch_), 1);
                return "byte " + std::to_string(at % pitch) + " of row " + std::to_string(at / pitch) +
                       " in memory: expected " + std::to_string(expected.block_[i]) + ", got " +
                       std::to_string(block_[i]);
            }
        }
        return {};
    }

private:
    int rowBytes_, height_, offset_, pitch_;
    std::size_t size_;
    std::unique_ptr<BYTE[]> block_;
};

struct RectCase {
    const kernels::RowTable& table;
    int width, height, targetOffset, sourceOffset;
    unsigned seed;
    std::mt19937 random{seed};

    // A third of the targets and of the sources run upwards, each by itself; a fifth of the cases have rows that lie
    // end to end.
    Operand Target(int bytesPerPixel) { return Make(bytesPerPixel, targetOffset, 3 + width % 5, seed % 3 == 2); }
    Operand Source(int bytesPerPixel) { return Make(bytesPerPixel, sourceOffset, 1 + width % 7, seed / 3 % 3 == 2); }

    void ExpectSame(const Operand& got, const Operand& expected) const {
        const std::string difference = got.DifferenceFrom(expected);
        ASSERT_TRUE(difference.empty()) << table.name << ", width " << width << ", target offset " << targetOffset
                                        << ", source offset " << sourceOffset << ", seed " << seed << ": "
                                        << difference;
    }

private:
    Operand Make(int bytesPerPixel, int offset, int padding, bool runsUpwards) const {
        const int pitch = width * bytesPerPixel + (seed % 5 == 4 ? 0 : padding);
        return Operand(width * bytesPerPixel, height, offset, runsUpwards ? -pitch : pitch);
    }
};

template <class Check>
void ForEachRectCase(Check check) {
    unsigned seed = 0;
    for (const kernels::RowTable* const table : kernels::AllTables()) {
        if (!table->runsHere()) {
            continue;
        }
        for (int width = 0; width <= 70; ++width) {
            for (int offset = 0; offset < 32; ++offset, ++seed) {
                RectCase rectCase{*table, width, 1 + static_cast<int>(seed % 3), offset, (offset * 7 + width) % 32,
                                  seed};
                check(rectCase);
                if (::testing::Test::HasFatalFailure()) {
                    return;
                }
            }
        }
    }
}

}   // namespace rastel::test

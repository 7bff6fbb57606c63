// The kernels of textures, in every table.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "rastel/surface/kernels.h"

using rastel::kernels::AllTables;
using rastel::kernels::RowTable;
using rastel::kernels::TexelLine;
using rastel::kernels::tileRows;

namespace {

std::vector<BYTE> RandomBytes(std::size_t count, std::minstd_rand& random) {
    std::vector<BYTE> bytes(count);
    for (BYTE& byte : bytes) {
        byte = static_cast<BYTE>(random() >> 8);
    }
    return bytes;
}

// A texture of `width` by `height` pixels that ends where its heap block ends, rows running either way.
struct Texture {
    Texture(int bytesPerPixel, std::minstd_rand& random)
        : Texture(bytesPerPixel, 1 + static_cast<int>(random() >> 8) % 90, random) {}
    Texture(int bytesPerPixel, int pixels, std::minstd_rand& random)
        : bytes(bytesPerPixel),
          width(pixels),
          height(1 + static_cast<int>(random() >> 8) % 40),
          pitch((width * bytes + 3) / 4 * 4),
          memory(RandomBytes(static_cast<std::size_t>(pitch) * static_cast<std::size_t>(height), random)) {
        first = memory.data();
        if (random() & 0x100) {
            first += static_cast<std::ptrdiff_t>(height - 1) * pitch;
            pitch = -pitch;
        }
    }
    const BYTE* At(DWORD u, DWORD v) const {
        return first + static_cast<std::ptrdiff_t>(v >> 16) * pitch + static_cast<std::ptrdiff_t>(u >> 16) * bytes;
    }
    int bytes, width, height, pitch;
    std::vector<BYTE> memory;
    const BYTE* first;
};

// From somewhere inside to somewhere inside, never beyond.
struct Line {
    Line(int size, int count, std::minstd_rand& random) {
        const auto position = [&] {
            return static_cast<int>((random() >> 4) % (static_cast<unsigned long>(size) * 65536));
        };
        const int from = position(), to = position();
        start = static_cast<DWORD>(from);
        step = count > 1 ? static_cast<DWORD>((to - from) / (count - 1)) : static_cast<DWORD>(random());
    }
    DWORD start, step;
};

TEST(TextureKernels, TakeTheTexelsThatTheLineMeets) {
    for (const RowTable* table : AllTables()) {
        if (!table->runsHere()) {
            continue;
        }
        std::minstd_rand random(7);
        for (int round = 0; round < 4000; ++round) {
            const int count = round % 70, bytes = round % 2 ? 4 : 1;
            const Texture texture(bytes, random);
            const Line u(texture.width, count, random), v(texture.height, count, random);
            std::vector<BYTE> row(static_cast<std::size_t>(count * bytes)), expected;
            const auto draw = bytes == 4 ? table->textureRow : table->textureBytesRow;
            draw(row.data(), texture.first, texture.pitch, count, {u.start, v.start, u.step, v.step});
            for (DWORD i = 0; i < static_cast<DWORD>(count); ++i) {
                const BYTE* const texel = texture.At(u.start + i * u.step, v.start + i * v.step);
                expected.insert(expected.end(), texel, texel + bytes);
            }
            ASSERT_EQ(row, expected) << table->name << ", " << count << " texels of " << bytes << " bytes";
        }
    }
}

TEST(TextureKernels, BlendEveryCoverageAndKeepTheAlphaByte) {
    for (const RowTable* table : AllTables()) {
        if (!table->runsHere()) {
            continue;
        }
        std::minstd_rand random(9);
        for (int round = 0; round < 3000; ++round) {
            const int count = round % 100;
            const auto pixelBytes = static_cast<std::size_t>(count) * 4;
            std::vector<BYTE> target = RandomBytes(pixelBytes, random), expected = target;
            const std::vector<BYTE> source = RandomBytes(pixelBytes, random);
            std::vector<BYTE> alpha = RandomBytes(static_cast<std::size_t>(count), random);
            BYTE run = 0;   // clear, solid or neither for a while
            for (std::size_t i = 0; i < alpha.size(); ++i) {
                run = random() % 24 == 0 ? static_cast<BYTE>(127 * (random() % 3)) : run;
                alpha[i] = run == 127 ? alpha[i] : run == 254 ? 255 : 0;
                const int weight = alpha[i] * 256 / 255;
                for (std::size_t c = 4 * i; c < 4 * i + 3; ++c) {
                    expected[c] = static_cast<BYTE>((expected[c] * (256 - weight) + source[c] * weight) >> 8);
                }
            }
            table->textureBlendRow(target.data(), source.data(), alpha.data(), count);
            ASSERT_EQ(target, expected) << table->name << ", " << count << " pixels";
        }
    }
}

// As if the texels had been laid side by side first. Many of them equal the key, or are clear or solid.
TEST(TextureKernels, CombineTheTexelsWithTheTarget) {
    const RowTable& plain = rastel::kernels::PlainRows();
    for (const RowTable* table : AllTables()) {
        if (!table->runsHere()) {
            continue;
        }
        std::minstd_rand random(11);
        for (int round = 0; round < 4000; ++round) {
            const int count = round % 70;
            const int sharedWidth = 4 * (1 + round % 22);   // then their pixels mostly have the same places
            const bool areAlike = round % 3 == 0;
            Texture texture = areAlike ? Texture(4, sharedWidth, random) : Texture(4, random);
            Texture plane = areAlike ? Texture(1, sharedWidth, random) : Texture(1, random);
            const int width = std::min(texture.width, plane.width), height = std::min(texture.height, plane.height);
            for (std::size_t i = 0; i + 4 <= texture.memory.size(); i += random() % 3 == 0 ? 4 : 8) {
                std::copy_n("\x56\x34\x12", 3, texture.memory.begin() + static_cast<std::ptrdiff_t>(i));
            }
            const bool isHard = random() % 2 == 0;   // groups of one coverage come up only where most have it
            const BYTE usual = random() % 2 == 0 ? 255 : 0;
            for (BYTE& byte : plane.memory) {
                byte = isHard ? (random() % 16 == 0 ? 255 - usual : usual) : random() % 4 == 0 ? 255 : byte;
            }
            const Line u(width, count, random), v(height, count, random);
            const auto pixels = static_cast<std::size_t>(count);
            std::vector<BYTE> texels(4 * pixels), coverage(pixels);
            const TexelLine line = {u.start, v.start, u.step, v.step};
            plain.textureRow(texels.data(), texture.first, texture.pitch, count, line);
            plain.textureBytesRow(coverage.data(), plane.first, plane.pitch, count, line);

            const std::vector<BYTE> before = RandomBytes(4 * pixels, random);
            std::vector<BYTE> target = before, expected = before;
            plain.keyCopyRect(expected.data(), 0, texels.data(), 0, count, 1, 0x123456);
            table->textureKeyRow(target.data(), texture.first, texture.pitch, count, line, 0x123456);
            ASSERT_EQ(target, expected) << table->name << ", " << count << " texels through a key";

            target = expected = before;
            plain.textureBlendRow(expected.data(), texels.data(), coverage.data(), count);
            table->texturePlaneRow(target.data(), texture.first, texture.pitch, plane.first, plane.pitch, count, line);
            ASSERT_EQ(target, expected) << table->name << ", " << count << " texels through a plane";
        }
    }
}

TEST(TextureKernels, DrawTilesAsRowsOfTheSameLines) {
    const RowTable& plain = rastel::kernels::PlainRows();
    for (const RowTable* table : AllTables()) {
        if (!table->runsHere()) {
            continue;
        }
        std::minstd_rand random(13);
        for (int round = 0; round < 1000; ++round) {
            const int count = round % 9 * rastel::kernels::tileColumns, targetPitch = count * 4 + round % 3 * 4;
            const Texture texture(4, 4 * (1 + round % 22), random);
            Texture plane(1, texture.width, random);
            for (BYTE& byte : plane.memory) {
                byte = random() % 4 == 0 ? byte : round % 2 ? 0 : 255;
            }
            TexelLine lines[tileRows];
            for (TexelLine& line : lines) {
                const Line u(texture.width, count, random), v(std::min(texture.height, plane.height), count, random);
                line = {u.start, v.start, u.step, v.step};
            }
            const DWORD key = static_cast<DWORD>(texture.At(lines[0].u, lines[0].v)[0]) * 0x10101;
            const std::vector<BYTE> before = RandomBytes(static_cast<std::size_t>(targetPitch * tileRows), random);
            const auto expectSame = [&](const char* what, int rowPitch, auto drawTile, auto drawRow) {
                std::vector<BYTE> target = before, expected = before;
                drawTile(target.data(), rowPitch);
                for (int row = 0; row < tileRows; ++row) {
                    drawRow(expected.data() + row * rowPitch, lines[row]);
                }
                ASSERT_EQ(target, expected) << table->name << ", " << count << " columns " << what;
            };
            const BYTE *const texels = texture.first, *const bytes = plane.first;
            const int pitch = texture.pitch, bytePitch = plane.pitch;
            expectSame(
                "of texels", targetPitch,
                [&](BYTE* to, int toPitch) { table->textureTile(to, toPitch, texels, pitch, count, lines); },
                [&](BYTE* to, TexelLine line) { plain.textureRow(to, texels, pitch, count, line); });
            expectSame(
                "of bytes", targetPitch / 4,
                [&](BYTE* to, int toPitch) { table->textureBytesTile(to, toPitch, bytes, bytePitch, count, lines); },
                [&](BYTE* to, TexelLine line) { plain.textureBytesRow(to, bytes, bytePitch, count, line); });
            expectSame(
                "through a key", targetPitch,
                [&](BYTE* to, int toPitch) { table->textureKeyTile(to, toPitch, texels, pitch, count, lines, key); },
                [&](BYTE* to, TexelLine line) { plain.textureKeyRow(to, texels, pitch, count, line, key); });
            expectSame(
                "through a plane", targetPitch,
                [&](BYTE* to, int toPitch) {
                    table->texturePlaneTile(to, toPitch, texels, pitch, bytes, bytePitch, count, lines);
                },
                [&](BYTE* to, TexelLine line) {
                    plain.texturePlaneRow(to, texels, pitch, bytes, bytePitch, count, line);
                });
        }
    }
}

}   // namespace

#include "tests/support/picture.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace rastel::test {

namespace {

using Bytes = std::vector<std::uint8_t>;

void AppendBigEndian(Bytes& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

std::uint32_t Crc(const Bytes& bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const std::uint8_t byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) {
            crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
        }
    }
    return ~crc;
}

void WriteChunk(std::ofstream& out, const std::string& type, const Bytes& data) {
    Bytes length, body(type.begin(), type.end());
    AppendBigEndian(length, static_cast<std::uint32_t>(data.size()));
    body.insert(body.end(), data.begin(), data.end());
    const std::uint32_t crc = Crc(body);
    AppendBigEndian(body, crc);
    out.write(reinterpret_cast<const char*>(length.data()), 4);
    out.write(reinterpret_cast<const char*>(body.data()), static_cast<std::streamsize>(body.size()));
}

// A zlib stream of stored blocks: pictures of failures needn't be small.
Bytes Stored(const Bytes& data) {
    constexpr std::size_t blockLimit = 65535;
    Bytes stream = {0x78, 0x01};
    std::uint32_t a = 1, b = 0;
    for (std::size_t at = 0; at < data.size(); at += blockLimit) {
        const std::size_t size = std::min(blockLimit, data.size() - at);
        stream.push_back(at + size == data.size());
        for (const std::size_t field : {size, ~size}) {
            stream.push_back(static_cast<std::uint8_t>(field));
            stream.push_back(static_cast<std::uint8_t>(field >> 8));
        }
        for (std::size_t i = at; i < at + size; ++i) {
            stream.push_back(data[i]);
            a = (a + data[i]) % 65521;
            b = (b + a) % 65521;
        }
    }
    AppendBigEndian(stream, b << 16 | a);
    return stream;
}

std::string Hex(DWORD pixel) {
    char text[16];
    std::snprintf(text, sizeof(text), "%08X", static_cast<unsigned>(pixel));
    return text;
}

std::string Size(const Picture& picture) {
    return std::to_string(picture.width) + "x" + std::to_string(picture.height);
}

DWORD Difference(DWORD a, DWORD b) {
    DWORD difference = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const int distance = std::abs(static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255));
        // The smallest difference should be seen as well.
        difference |= static_cast<DWORD>(distance ? std::min(64 + distance, 255) : 0) << shift;
    }
    return difference;
}

}   // namespace

bool WritePng(const Picture& picture, const std::filesystem::path& file) {
    if (picture.width < 1 || picture.height < 1) {
        return false;
    }
    Bytes header, rows;
    AppendBigEndian(header, static_cast<std::uint32_t>(picture.width));
    AppendBigEndian(header, static_cast<std::uint32_t>(picture.height));
    header.insert(header.end(), {8, 2, 0, 0, 0});   // 8 bits a channel, RGB
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        if (i % static_cast<std::size_t>(picture.width) == 0) {
            rows.push_back(0);   // no filter
        }
        for (const int shift : {16, 8, 0}) {
            rows.push_back(static_cast<std::uint8_t>(picture.pixels[i] >> shift));
        }
    }
    std::ofstream out(file, std::ios::binary);
    out.write("\x89PNG\r\n\x1A\n", 8);
    WriteChunk(out, "IHDR", header);
    WriteChunk(out, "IDAT", Stored(rows));
    WriteChunk(out, "IEND", {});
    return out.good();
}

::testing::AssertionResult SamePicture(const Picture& expected, const Picture& got, const std::string& name,
                                       const std::filesystem::path& folder) {
    if (expected.width != got.width || expected.height != got.height || expected.pixels.size() != got.pixels.size()) {
        return ::testing::AssertionFailure() << name << ": expected " << Size(expected) << ", got " << Size(got);
    }
    const auto [first, other] = std::mismatch(expected.pixels.begin(), expected.pixels.end(), got.pixels.begin());
    if (first == expected.pixels.end()) {
        return ::testing::AssertionSuccess();
    }
    Picture difference = expected;
    std::size_t count = 0;
    for (std::size_t i = 0; i < expected.pixels.size(); ++i) {
        difference.pixels[i] = Difference(expected.pixels[i], got.pixels[i]);
        count += expected.pixels[i] != got.pixels[i];
    }
    std::error_code ignored;   // the verdict doesn't hang on the files
    std::filesystem::create_directories(folder, ignored);
    WritePng(expected, folder / (name + "-expected.png"));
    WritePng(got, folder / (name + "-got.png"));
    WritePng(difference, folder / (name + "-difference.png"));
    const auto at = first - expected.pixels.begin();
    return ::testing::AssertionFailure() << name << ": " << count << " pixels differ, first (" << at % expected.width
                                         << ", " << at / expected.width << "): expected " << Hex(*first) << ", got "
                                         << Hex(*other) << "; see " << (folder / name).string() << "-*.png";
}

}   // namespace rastel::test

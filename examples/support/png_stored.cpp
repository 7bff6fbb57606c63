// PNG without a library: files are written with their rows stored as they are, and none are read.
#include <algorithm>
#include <array>

#include "examples/support/picture_codecs.h"

namespace rastel::example {

namespace {

using Buffer = std::vector<unsigned char>;

void AppendBigEndian(Buffer& buffer, DWORD value) {
    for (const int shift : {24, 16, 8, 0}) {
        buffer.push_back(static_cast<unsigned char>(value >> shift));
    }
}

DWORD Crc32(const unsigned char* bytes, std::size_t count) {
    static const std::array<DWORD, 256> table = [] {
        std::array<DWORD, 256> made{};
        for (DWORD index = 0; index < 256; ++index) {
            DWORD value = index;
            for (int bit = 0; bit < 8; ++bit) {
                value = (value & 1) ? 0xEDB88320u ^ (value >> 1) : value >> 1;
            }
            made[index] = value;
        }
        return made;
    }();
    DWORD crc = 0xFFFFFFFFu;
    for (std::size_t index = 0; index < count; ++index) {
        crc = table[(crc ^ bytes[index]) & 0xFF] ^ (crc >> 8);
    }
    return ~crc;
}

DWORD Adler32(const Buffer& bytes) {
    DWORD sum = 1, sumOfSums = 0;
    for (const unsigned char byte : bytes) {
        sum = (sum + byte) % 65521;
        sumOfSums = (sumOfSums + sum) % 65521;
    }
    return sumOfSums << 16 | sum;
}

void AppendChunk(Buffer& file, const char (&type)[5], const Buffer& data) {
    AppendBigEndian(file, static_cast<DWORD>(data.size()));
    const std::size_t start = file.size();
    file.insert(file.end(), type, type + 4);
    file.insert(file.end(), data.begin(), data.end());
    AppendBigEndian(file, Crc32(file.data() + start, file.size() - start));
}

// A zlib stream of blocks that are stored, each at most 65535 bytes.
Buffer Stored(const Buffer& raw) {
    Buffer stream = {0x78, 0x01};
    for (std::size_t start = 0; start < raw.size();) {
        const std::size_t count = std::min<std::size_t>(raw.size() - start, 65535);
        const auto length = static_cast<unsigned>(count);
        stream.push_back(start + count == raw.size() ? 1 : 0);
        for (const unsigned half : {length, ~length}) {
            stream.push_back(static_cast<unsigned char>(half & 0xFF));
            stream.push_back(static_cast<unsigned char>(half >> 8 & 0xFF));
        }
        stream.insert(stream.end(), raw.begin() + static_cast<std::ptrdiff_t>(start),
                      raw.begin() + static_cast<std::ptrdiff_t>(start + count));
        start += count;
    }
    AppendBigEndian(stream, Adler32(raw));
    return stream;
}

}   // namespace

std::optional<Picture> DecodePng(Bytes, std::string& error) {
    error = "this build reads no PNG files, only BMP";
    return std::nullopt;
}

bool EncodePng(const Picture& picture, std::vector<unsigned char>& bytes) {
    const Buffer channels = ChannelsOf(picture);
    const std::size_t rowBytes = static_cast<std::size_t>(picture.width) * (picture.hasAlpha ? 4 : 3);
    Buffer rows;
    rows.reserve(channels.size() + static_cast<std::size_t>(picture.height));
    for (auto row = channels.begin(); row != channels.end(); row += static_cast<std::ptrdiff_t>(rowBytes)) {
        rows.push_back(0);   // no filter
        rows.insert(rows.end(), row, row + static_cast<std::ptrdiff_t>(rowBytes));
    }
    Buffer header;
    AppendBigEndian(header, static_cast<DWORD>(picture.width));
    AppendBigEndian(header, static_cast<DWORD>(picture.height));
    const unsigned char colors = picture.hasAlpha ? 6 : 2;   // with alpha, or red, green and blue only
    header.insert(header.end(), {8, colors, 0, 0, 0});
    bytes = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    AppendChunk(bytes, "IHDR", header);
    AppendChunk(bytes, "IDAT", Stored(rows));
    AppendChunk(bytes, "IEND", {});
    return true;
}

}   // namespace rastel::example

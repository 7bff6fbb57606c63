// Icon files, icon groups and packed bytes, built by tests.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <type_traits>
#include <vector>

#include "rastel/platform/types.h"

namespace rastel::test {

using ByteVector = std::vector<BYTE>;

template <typename Value>
void Append(ByteVector& bytes, Value value) {
    static_assert(std::is_trivially_copyable_v<Value>);
    const std::size_t at = bytes.size();
    bytes.resize(at + sizeof(value));
    std::memcpy(bytes.data() + at, &value, sizeof(value));
}

inline void Append(ByteVector& bytes, const ByteVector& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

template <typename Value>
void Patch(ByteVector& bytes, std::size_t at, Value value) {
    ASSERT_LE(at + sizeof(value), bytes.size());
    std::memcpy(bytes.data() + at, &value, sizeof(value));
}

struct IconPicture {
    int width, height, bits;
    BYTE seed = 0;   // byte i of the pixels is seed + i
};

// A header, the pixels from the bottom up, an empty mask.
inline ByteVector ImageBytes(const IconPicture& picture) {
    ByteVector bytes;
    BITMAPINFOHEADER header = {};
    header.biSize = sizeof(header);
    header.biWidth = picture.width;
    header.biHeight = picture.height * 2;   // the mask counts
    header.biPlanes = 1;
    header.biBitCount = static_cast<WORD>(picture.bits);
    Append(bytes, header);
    const int rowBytes = (picture.width * picture.bits + 31) / 32 * 4;
    const int maskBytes = (picture.width + 31) / 32 * 4 * picture.height;
    for (int i = 0; i < rowBytes * picture.height; ++i) {
        bytes.push_back(static_cast<BYTE>(picture.seed + i));
    }
    bytes.insert(bytes.end(), static_cast<std::size_t>(maskBytes), BYTE{0});
    return bytes;
}

// The first eight bytes of an entry, and the image's size.
inline void AppendEntry(ByteVector& bytes, const IconPicture& picture, std::size_t imageBytes) {
    for (const int side : {picture.width, picture.height}) {
        bytes.push_back(static_cast<BYTE>(side));   // 256 becomes 0
    }
    Append(bytes, WORD{0});
    Append(bytes, WORD{1});
    Append(bytes, static_cast<WORD>(picture.bits));
    Append(bytes, static_cast<DWORD>(imageBytes));
}

inline ByteVector DirectoryHeader(std::size_t count) {
    ByteVector bytes;
    Append(bytes, WORD{0});
    Append(bytes, WORD{1});
    Append(bytes, static_cast<WORD>(count));
    return bytes;
}

inline ByteVector IconFileBytes(const std::vector<IconPicture>& pictures) {
    ByteVector bytes = DirectoryHeader(pictures.size()), images;
    const std::size_t start = bytes.size() + pictures.size() * 16;
    for (const IconPicture& picture : pictures) {
        const ByteVector image = ImageBytes(picture);
        AppendEntry(bytes, picture, image.size());
        Append(bytes, static_cast<DWORD>(start + images.size()));
        Append(images, image);
    }
    Append(bytes, images);
    return bytes;
}

// The images are numbered from `firstNumber` on.
inline ByteVector IconGroupBytes(const std::vector<IconPicture>& pictures, WORD firstNumber) {
    ByteVector bytes = DirectoryHeader(pictures.size());
    for (const IconPicture& picture : pictures) {
        AppendEntry(bytes, picture, ImageBytes(picture).size());
        Append(bytes, firstNumber++);
    }
    return bytes;
}

}   // namespace rastel::test

#include "rastel/image/icon_directory.h"

#include <algorithm>
#include <cstring>

namespace rastel::image {

namespace {

constexpr std::size_t countAt = 4, entriesAt = 6;

template <typename Value>
Value ValueAt(const BYTE* bytes) {
    Value value;
    std::memcpy(&value, bytes, sizeof(value));
    return value;
}

int SideOf(BYTE stored) {
    return stored ? stored : 256;
}

}   // namespace

IconDirectory::IconDirectory(Kind kind, std::span<const BYTE> bytes)
    : entryBytes_(kind == Kind::File ? 16 : 14), bytes_(bytes) {
    if (bytes.size() >= entriesAt) {
        const std::size_t room = (bytes.size() - entriesAt) / entryBytes_;
        count_ = static_cast<int>(std::min<std::size_t>(ValueAt<WORD>(bytes.data() + countAt), room));
    }
}

IconEntry IconDirectory::Entry(int index) const {
    if (index < 0 || index >= count_) {
        return {};
    }
    const BYTE* const entry = bytes_.data() + entriesAt + static_cast<std::size_t>(index) * entryBytes_;
    const bool isFile = entryBytes_ == 16;
    return {SideOf(entry[0]), SideOf(entry[1]), ValueAt<WORD>(entry + 6), ValueAt<DWORD>(entry + 8),
            isFile ? ValueAt<DWORD>(entry + 12) : ValueAt<WORD>(entry + 12)};
}

std::optional<IconEntry> IconDirectory::Find(int width, int height, int bitCount) const {
    for (int i = 0; i < count_; ++i) {
        const IconEntry entry = Entry(i);
        if (entry.width == width && entry.height == height && entry.bitCount == bitCount) {
            return entry;
        }
    }
    return std::nullopt;
}

std::optional<std::span<const BYTE>> IconPixels(std::span<const BYTE> image, int width, int height) {
    if (width < 1 || width > 256 || height < 1 || height > 256 || image.size() < sizeof(BITMAPINFOHEADER)) {
        return std::nullopt;
    }
    const auto header = ValueAt<BITMAPINFOHEADER>(image.data());
    const auto pixelBytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * sizeof(DWORD);
    if (header.biBitCount != 32 || header.biSize < sizeof(header) || header.biSize > image.size() ||
        pixelBytes > image.size() - header.biSize) {
        return std::nullopt;
    }
    return image.subspan(header.biSize, pixelBytes);
}

}   // namespace rastel::image

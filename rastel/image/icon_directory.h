// The icon format: a directory of images, in a file or in a module's icon group.
//
// The bytes stay the caller's. Whatever they hold, nothing outside them is read.
#pragma once

#include <optional>
#include <span>

#include "rastel/platform/types.h"

namespace rastel::image {

struct IconEntry {
    int width = 0;   // 1 to 256; the format writes 256 as 0
    int height = 0;
    int bitCount = 0;     // 0 in some old files
    DWORD bytes = 0;      // of the image, as the directory says
    DWORD location = 0;   // in a file the image's offset from the start, in a group the number of its resource
};

class IconDirectory {
public:
    enum class Kind { File, Group };

    IconDirectory(Kind kind, std::span<const BYTE> bytes);

    int Count() const { return count_; }                                        // those that lie in the bytes whole
    IconEntry Entry(int index) const;                                           // empty for no entry's index
    std::optional<IconEntry> Find(int width, int height, int bitCount) const;   // the first

private:
    std::size_t entryBytes_;
    std::span<const BYTE> bytes_;
    int count_ = 0;
};

// The pixels of an image of 32 bits: width * height words from the bottom row up. Nothing for one of another depth,
// one that is compressed as PNG, and one whose pixels aren't all there.
std::optional<std::span<const BYTE>> IconPixels(std::span<const BYTE> image, int width, int height);

}   // namespace rastel::image

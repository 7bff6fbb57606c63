// How to gather the bytes of a stretched row sixteen at a time: made once a blit, used for each of its rows.
//
// A block of 16 target bytes comes from one to four neighbouring windows of 16 source bytes. A mask a window says which
// of its bytes goes where; 0x80 leaves a place to the other windows.
#pragma once

#include <cstdint>
#include <vector>

namespace rastel::platform {

struct PickBlock {
    std::int32_t source;   // bytes from the start of the row
    std::int32_t target;   // bytes from the first picked pixel
};

class PickPlan {
public:
    // False: such rows are better picked pixel by pixel: too short, or too much is skipped between two pixels.
    // `columns` as for PickPixels; no block reads past `sourceBytes`.
    bool Make(const int* columns, int count, int bytesPerPixel, std::int64_t sourceBytes);

    int Windows() const { return windows_; }
    int BlockCount() const { return static_cast<int>(blocks_.size()); }
    const PickBlock* Blocks() const { return blocks_.data(); }

    // Blocks go in pairs (the last may stand there twice). A pair's masks: 16 bytes for the first window of each of the
    // two, then for the second windows, and so on.
    const unsigned char* Masks() const { return masks_.data(); }

private:
    static constexpr int kBlock = 16;
    static constexpr int kMostWindows = 4;

    int windows_ = 0;
    std::vector<PickBlock> blocks_;
    std::vector<unsigned char> masks_;
};

}   // namespace rastel::platform

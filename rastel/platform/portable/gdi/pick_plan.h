// How to gather the pixels of a stretched row many at a time: made once a blit, used for each of its rows.
#pragma once

#include <cstdint>
#include <vector>

namespace rastel::platform {

// For pixels of 1 to 3 bytes, sixteen bytes at a time. A block of 16 target bytes comes from one to four neighbouring
// windows of 16 source bytes. A mask a window says which of its bytes goes where; 0x80 leaves a place to the other
// windows.
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

// For pixels of 4 bytes, eight a step: they come from one, two or four neighbouring windows of eight. The last step is
// set back to end with the row; what it shares with its neighbour is the same pixels.
class PickPlan32 {
public:
    static constexpr int kStep = 8;

    // False: such rows are better picked pixel by pixel. `columns` as for PickPixels; no step reads a column of
    // `sourceWidth` or above.
    bool Make(const int* columns, int count, int sourceWidth);

    int Windows() const { return windows_; }
    bool TakesEverySecond() const { return takesEverySecond_; }   // upwards, from Starts()[0] on
    int Count() const { return count_; }                          // pixels of the row
    int Steps() const { return static_cast<int>(starts_.size()); }
    const std::int32_t* Starts() const { return starts_.data(); }     // a step: the first column of its windows
    const std::int32_t* Offsets() const { return offsets_.data(); }   // eight a step: columns from its start

private:
    int windows_ = 0;
    int count_ = 0;
    bool takesEverySecond_ = false;
    std::vector<std::int32_t> starts_;
    std::vector<std::int32_t> offsets_;
};

}   // namespace rastel::platform

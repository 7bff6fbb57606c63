#include "rastel/platform/portable/gdi/pick_plan.h"

#include <algorithm>
#include <cstdlib>

namespace rastel::platform {

bool PickPlan::Make(const int* columns, int count, int bytesPerPixel, std::int64_t sourceBytes) {
    blocks_.clear();
    masks_.clear();
    const std::int64_t bytes = std::int64_t{count} * bytesPerPixel;
    if (bytes < kBlock || bytes > INT32_MAX || sourceBytes > INT32_MAX) {
        return false;
    }
    std::vector<std::int32_t> sources(static_cast<std::size_t>(bytes));
    for (std::size_t i = 0, at = 0; at < sources.size(); ++i) {
        for (int byte = 0; byte < bytesPerPixel; ++byte) {
            sources[at++] = columns[i] * bytesPerPixel + byte;
        }
    }
    // The last block is set back to end with the row; what it shares with its neighbour is the same bytes.
    const auto total = static_cast<std::int32_t>(bytes);
    windows_ = 1;
    for (std::int32_t start = 0; start < total; start += kBlock) {
        const std::int32_t target = std::min(start, total - kBlock);
        // Columns rise or fall steadily: the ends of a block hold its extremes, to a pixel.
        const int first = columns[target / bytesPerPixel] * bytesPerPixel;
        const int last = columns[(target + kBlock - 1) / bytesPerPixel] * bytesPerPixel;
        const int low = std::min(first, last);
        windows_ = std::max(windows_, (std::max(first, last) + bytesPerPixel - 1 - low) / kBlock + 1);
        blocks_.push_back({low, target});
    }
    if (blocks_.size() % 2 != 0) {
        blocks_.push_back(blocks_.back());
    }
    if (windows_ > kMostWindows || sourceBytes < windows_ * kBlock) {
        return false;
    }
    masks_.assign(blocks_.size() * static_cast<std::size_t>(windows_ * kBlock), 0x80);
    for (std::size_t block = 0; block < blocks_.size(); ++block) {
        PickBlock& place = blocks_[block];
        place.source = std::min(place.source, static_cast<std::int32_t>(sourceBytes) - windows_ * kBlock);
        unsigned char* const masks =
            masks_.data() + block / 2 * static_cast<std::size_t>(2 * windows_ * kBlock) + block % 2 * kBlock;
        for (std::int32_t i = 0; i < kBlock; ++i) {
            const std::int32_t offset = sources[static_cast<std::size_t>(place.target + i)] - place.source;
            masks[offset / kBlock * (2 * kBlock) + i] = static_cast<unsigned char>(offset % kBlock);
        }
    }
    return true;
}

bool PickPlan32::Make(const int* columns, int count, int sourceWidth) {
    if (count < kStep) {
        return false;
    }
    // Steps are as wide as one another to a pixel.
    const int reach = std::abs(columns[kStep - 1] - columns[0]) + 2;
    windows_ = reach <= kStep ? 1 : reach <= 2 * kStep ? 2 : 4;
    if (reach > windows_ * kStep || sourceWidth < windows_ * kStep) {
        return false;
    }
    count_ = count;
    takesEverySecond_ = columns[count - 1] - columns[0] == 2 * (count - 1) && columns[1] - columns[0] == 2 &&
                        columns[count - 1] + 1 < sourceWidth;
    const int steps = (count + kStep - 1) / kStep;
    starts_.resize(static_cast<std::size_t>(steps));
    offsets_.resize(static_cast<std::size_t>(steps) * kStep);
    std::int32_t* offsets = offsets_.data();
    for (std::int32_t& start : starts_) {
        const int* const wanted = columns + std::min<std::ptrdiff_t>(offsets - offsets_.data(), count - kStep);
        start = std::min({wanted[0], wanted[kStep - 1], sourceWidth - windows_ * kStep});
        for (int i = 0; i < kStep; ++i) {
            *offsets++ = wanted[i] - start;
        }
    }
    return true;
}

}   // namespace rastel::platform

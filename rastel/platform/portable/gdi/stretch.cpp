#include "rastel/platform/portable/gdi/stretch.h"

#include <algorithm>
#include <cstring>

#include "rastel/platform/portable/gdi/pixel_rows.h"

namespace rastel::platform {

namespace {

template <typename Pixel>
void Pick(const unsigned char* source, const int* columns, int count, unsigned char* target) {
    for (int i = 0; i < count; ++i) {
        std::memcpy(target + static_cast<std::ptrdiff_t>(i) * static_cast<std::ptrdiff_t>(sizeof(Pixel)),
                    source + static_cast<std::ptrdiff_t>(columns[i]) * static_cast<std::ptrdiff_t>(sizeof(Pixel)),
                    sizeof(Pixel));
    }
}

struct Triple {
    unsigned char bytes[3];
};

}   // namespace

StretchAxis::StretchAxis(std::int64_t target, std::int64_t targetSize, std::int64_t source, std::int64_t sourceSize,
                         int limit)
    : target_(LowOf(target, targetSize)),
      targetSize_(targetSize < 0 ? -targetSize : targetSize),
      source_(LowOf(source, sourceSize)),
      sourceSize_(sourceSize < 0 ? -sourceSize : sourceSize),
      limit_(limit),
      mirrored_((targetSize < 0) != (sourceSize < 0)) {
    if (targetSize_ == 0 || sourceSize_ == 0) {
        return;
    }
    // Steps whose source lies in [0, limit): i * S / T >= low and < high. Sizes stay below 2^32 and cut ones at 2^31,
    // so that products fit 64 bits.
    const std::int64_t low = std::clamp<std::int64_t>(-source_, 0, sourceSize_);
    const std::int64_t high = std::clamp<std::int64_t>(limit - source_, 0, sourceSize_);
    const auto stepAt = [this](std::int64_t offset) {
        const auto size = static_cast<std::uint64_t>(sourceSize_);
        const std::uint64_t product = static_cast<std::uint64_t>(offset) * static_cast<std::uint64_t>(targetSize_);
        return static_cast<std::int64_t>(product / size + (product % size != 0 ? 1 : 0));
    };
    const std::int64_t begin = stepAt(low);
    const std::int64_t end = stepAt(high);
    first_ = target_ + (mirrored_ ? targetSize_ - end : begin);
    last_ = target_ + (mirrored_ ? targetSize_ - begin : end);
}

std::uint64_t StretchAxis::StepOf(std::int64_t target) const {
    const std::int64_t step = target - target_;
    return static_cast<std::uint64_t>(mirrored_ ? targetSize_ - 1 - step : step);
}

int StretchAxis::SourceOf(std::int64_t target) const {
    const std::uint64_t offset =
        StepOf(target) * static_cast<std::uint64_t>(sourceSize_) / static_cast<std::uint64_t>(targetSize_);
    return static_cast<int>(source_ + static_cast<std::int64_t>(offset));
}

void StretchAxis::BoxOf(std::int64_t target, int* first, int* last) const {
    const std::uint64_t step = StepOf(target);
    const auto size = static_cast<std::uint64_t>(sourceSize_);
    const auto count = static_cast<std::uint64_t>(targetSize_);
    const std::uint64_t begin = step * size / count;
    const std::uint64_t end = std::max((step + 1) * size / count, begin + 1);
    *first = static_cast<int>(std::clamp<std::int64_t>(source_ + static_cast<std::int64_t>(begin), 0, limit_ - 1));
    *last = static_cast<int>(std::clamp<std::int64_t>(source_ + static_cast<std::int64_t>(end), *first + 1, limit_));
}

void StretchAxis::Fill(std::int64_t target, int count, int* sources) const {
    if (count <= 0) {
        return;
    }
    // The quotient moves by a fixed whole part, and by one more whenever the remainders have added up.
    const auto size = static_cast<std::uint64_t>(sourceSize_);
    const auto divisor = static_cast<std::uint64_t>(targetSize_);
    const std::int64_t lowest = mirrored_ ? target + count - 1 : target;   // the position with the smallest step
    const std::uint64_t start = StepOf(lowest) * size;
    std::int64_t source = source_ + static_cast<std::int64_t>(start / divisor);
    std::uint64_t rest = start % divisor;
    const auto whole = static_cast<std::int64_t>(size / divisor);
    const std::uint64_t part = size % divisor;
    for (int i = 0; i < count; ++i) {
        sources[mirrored_ ? count - 1 - i : i] = static_cast<int>(source);
        source += whole;
        rest += part;
        if (rest >= divisor) {
            rest -= divisor;
            ++source;
        }
    }
}

int StretchAxis::SourceFirst() const {
    return static_cast<int>(std::clamp<std::int64_t>(source_, 0, limit_));
}

int StretchAxis::SourceLast() const {
    return static_cast<int>(std::clamp<std::int64_t>(source_ + sourceSize_, 0, limit_));
}

void PickPixels(const unsigned char* source, int bitsPerPixel, const int* columns, int count, unsigned char* target) {
    switch (bitsPerPixel) {
        case 8:
            Pick<std::uint8_t>(source, columns, count, target);
            break;
        case 16:
            Pick<std::uint16_t>(source, columns, count, target);
            break;
        case 24:
            Pick<Triple>(source, columns, count, target);
            break;
        default:
            Pick<std::uint32_t>(source, columns, count, target);
            break;
    }
}

}   // namespace rastel::platform

#include "rastel/platform/portable/gdi/average.h"

#include <algorithm>

namespace rastel::platform {

namespace {

PixelBuffer Usual32() {
    PixelBuffer buffer;
    buffer.format = FormatOfDepth(32);
    return buffer;
}

MonoColors SourceRules(MonoColors mono) {
    mono.targetIsMono = false;
    return mono;
}

}   // namespace

BoxAverager::BoxAverager(const PixelBuffer& source, const MonoColors& mono, const StretchAxis& columns,
                         const StretchAxis& rows, int left, int width)
    : source_(source), rows_(rows), converter_(source, Usual32(), SourceRules(mono)) {
    int lastColumn = 0;
    firstColumn_ = INT32_MAX;
    boxes_.resize(static_cast<std::size_t>(width));
    for (int i = 0; i < width; ++i) {
        Box& box = boxes_[static_cast<std::size_t>(i)];
        columns.BoxOf(std::int64_t{left} + i, &box.first, &box.last);
        firstColumn_ = std::min(firstColumn_, box.first);
        lastColumn = std::max(lastColumn, box.last);
    }
    converted_.resize(static_cast<std::size_t>(std::max(lastColumn - firstColumn_, 0)));
    sums_.resize(boxes_.size() * 4);
}

void BoxAverager::Add(const unsigned char* sourceRow) {
    converter_.ConvertRow(sourceRow, firstColumn_, reinterpret_cast<unsigned char*>(converted_.data()), 0,
                          static_cast<int>(converted_.size()));
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        std::uint64_t* const sum = &sums_[i * 4];
        for (int x = boxes_[i].first; x < boxes_[i].last;) {
            // Two sums of 32 bits share a word; so many pixels cannot overflow one.
            const int end = x + std::min(boxes_[i].last - x, 1 << 24);
            std::uint64_t even = 0;
            std::uint64_t odd = 0;
            for (; x < end; ++x) {
                const std::uint64_t value = converted_[static_cast<std::size_t>(x - firstColumn_)];
                even += (value & 0xFF) | ((value & 0xFF0000) << 16);
                odd += ((value >> 8) & 0xFF) | ((value & 0xFF000000) << 8);
            }
            sum[0] += even & 0xFFFFFFFF;
            sum[1] += odd & 0xFFFFFFFF;
            sum[2] += even >> 32;
            sum[3] += odd >> 32;
        }
    }
}

void BoxAverager::Row(int y, DWORD* values) {
    int first = 0;
    int last = 0;
    rows_.BoxOf(y, &first, &last);
    std::fill(sums_.begin(), sums_.end(), 0u);
    for (int row = first; row < last; ++row) {
        Add(source_.Row(row));
    }
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        const auto count =
            static_cast<std::uint64_t>(last - first) * static_cast<std::uint64_t>(boxes_[i].last - boxes_[i].first);
        const std::uint64_t* const sum = &sums_[i * 4];
        DWORD value = 0;
        for (unsigned channel = 0; channel < 4; ++channel) {
            value |= static_cast<DWORD>((sum[channel] + count / 2) / count) << (8 * channel);
        }
        values[i] = value;
    }
}

}   // namespace rastel::platform

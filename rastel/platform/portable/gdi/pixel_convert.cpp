#include "rastel/platform/portable/gdi/pixel_convert.h"

#include <algorithm>
#include <cstring>

#include "rastel/platform/portable/gdi.h"
#include "rastel/platform/portable/gdi/pixel_color.h"
#include "rastel/platform/portable/gdi/pixel_rows.h"

namespace rastel::platform {

namespace {

constexpr int kChunk = 256;                // pixels on the stack at a time
constexpr std::size_t kCacheSize = 4096;   // a power of two
constexpr COLORREF kNoColor = 0xFFFFFFFF;
constexpr PixelFormat kUsual32 = {32, 0xFF0000, 0x00FF00, 0x0000FF};
constexpr PixelFormat kUsual24 = {24, 0xFF0000, 0x00FF00, 0x0000FF};
constexpr PixelFormat kUsual565 = {16, 0xF800, 0x07E0, 0x001F};
constexpr PixelFormat kUsual555 = {16, 0x7C00, 0x03E0, 0x001F};

bool SameColors(const PixelBuffer& first, const PixelBuffer& second) {
    if (first.colors == second.colors && first.colorCount == second.colorCount) {
        return true;
    }
    if (first.colors == nullptr || second.colors == nullptr || first.colorCount != second.colorCount) {
        return false;
    }
    return std::equal(first.colors, first.colors + first.colorCount, second.colors,
                      [](const RGBQUAD& a, const RGBQUAD& b) { return ColorOf(a) == ColorOf(b); });
}

// The usual plane of coverage: index and grey are the same number.
bool IsGreyRamp(const PixelBuffer& buffer) {
    if (buffer.format.bitsPerPixel != 8 || !buffer.format.IsIndexed() || buffer.colorCount != 256) {
        return false;
    }
    for (DWORD i = 0; i < 256; ++i) {
        if (ColorOf(buffer.colors[i]) != i * 0x010101) {
            return false;
        }
    }
    return true;
}

// Whole rows from and to the usual 32 bits; null: no row function knows the format.
RowKernels::ConvertRow WidenerOf(const PixelFormat& format) {
    const RowKernels& kernels = Kernels();
    return format == kUsual24    ? kernels.from24To32
           : format == kUsual565 ? kernels.from565To32
           : format == kUsual555 ? kernels.from555To32
                                 : nullptr;
}

RowKernels::ConvertRow NarrowerOf(const PixelFormat& format) {
    const RowKernels& kernels = Kernels();
    return format == kUsual24    ? kernels.from32To24
           : format == kUsual565 ? kernels.from32To565
           : format == kUsual555 ? kernels.from32To555
                                 : nullptr;
}

DWORD GreyOf(COLORREF color) {
    return (DWORD{GetRValue(color)} + GetGValue(color) + GetBValue(color) + 1) / 3;
}

}   // namespace

PixelConverter::PixelConverter(const PixelBuffer& source, const PixelBuffer& target, const MonoColors& mono)
    : source_(source.format), target_(target.format) {
    const bool sameMono = mono.sourceIsMono && mono.targetIsMono;
    const bool sameTables = !source_.IsIndexed() || (!mono.sourceIsMono && SameColors(source, target));
    if (sameMono || (source_ == target_ && sameTables && !mono.targetIsMono)) {
        kind_ = Kind::Identity;
    } else if (source_.IsIndexed()) {
        kind_ = Kind::Table;
        MakeTable(source, target, mono);
    } else if (mono.targetIsMono && mono.matchExactly) {
        kind_ = Kind::Match;
        match_ = PixelOfColor(source, mono.match);
        matchMask_ = source_.redMask | source_.greenMask | source_.blueMask;
    } else {
        MakeChannels(source_, target_.IsIndexed() ? kUsual32 : target_);
        kind_ = !target_.IsIndexed() ? Kind::Channels : IsGreyRamp(target) ? Kind::Grey : Kind::Nearest;
        if (kind_ == Kind::Nearest && target.colors != nullptr) {
            colors_.assign(target.colors, target.colors + target.colorCount);
        }
    }
    ChooseRows();
}

void PixelConverter::MakeTable(const PixelBuffer& source, const PixelBuffer& target, const MonoColors& mono) {
    const std::size_t size = std::size_t{1} << source_.bitsPerPixel;
    table_.resize(size);
    for (std::size_t i = 0; i < size; ++i) {
        const COLORREF color = !mono.sourceIsMono ? ColorOfPixel(source, static_cast<DWORD>(i))
                               : i == 0           ? mono.text
                                                  : mono.back;
        if (mono.targetIsMono && mono.matchExactly) {
            table_[i] = color == mono.match ? 1 : 0;
        } else {
            table_[i] = PixelOfColor(target, color);
        }
    }
}

void PixelConverter::MakeChannels(const PixelFormat& source, const PixelFormat& target) {
    const DWORD sourceMasks[3] = {source.redMask, source.greenMask, source.blueMask};
    const DWORD targetMasks[3] = {target.redMask, target.greenMask, target.blueMask};
    table_.resize(3 * 256);
    for (std::size_t i = 0; i < 3; ++i) {
        const Channel from(sourceMasks[i]);
        const Channel to(targetMasks[i]);
        shifts_[i] = from.shift;
        channelMasks_[i] = (1u << from.bits) - 1;
        for (DWORD value = 0; value <= channelMasks_[i]; ++value) {
            table_[i * 256 + value] = to.bits == 0 ? 0 : to.Narrow(from.Widen(value << from.shift));
        }
    }
}

DWORD PixelConverter::NearestIndex(COLORREF color) {
    if (cache_.empty()) {
        cache_.assign(kCacheSize, {kNoColor, 0});
    }
    Remembered& slot = cache_[((color * 0x9E3779B1u) >> 20) & (kCacheSize - 1)];
    if (slot.color != color) {
        slot = {color, static_cast<DWORD>(NearestColor(colors_.data(), static_cast<int>(colors_.size()), color))};
    }
    return slot.index;
}

void PixelConverter::Map(const DWORD* source, DWORD* target, int count) {
    switch (kind_) {
        case Kind::Identity:
            if (source != target && count > 0) {
                std::memcpy(target, source, static_cast<std::size_t>(count) * 4);
            }
            return;
        case Kind::Table:
            for (int i = 0; i < count; ++i) {
                target[i] = table_[source[i] & (table_.size() - 1)];
            }
            return;
        case Kind::Match:
            for (int i = 0; i < count; ++i) {
                target[i] = (source[i] & matchMask_) == match_ ? 1 : 0;
            }
            return;
        case Kind::Channels:
        case Kind::Grey:
        case Kind::Nearest:
            break;
    }
    const DWORD* const red = table_.data();
    const DWORD* const green = red + 256;
    const DWORD* const blue = green + 256;
    for (int i = 0; i < count; ++i) {
        const DWORD value = source[i];
        target[i] = red[(value >> shifts_[0]) & channelMasks_[0]] | green[(value >> shifts_[1]) & channelMasks_[1]] |
                    blue[(value >> shifts_[2]) & channelMasks_[2]];
    }
    if (kind_ == Kind::Channels) {
        return;
    }
    for (int i = 0; i < count; ++i) {
        const COLORREF color = RGB(target[i] >> 16, target[i] >> 8, target[i]);
        target[i] = kind_ == Kind::Grey ? GreyOf(color) : NearestIndex(color);
    }
}

void PixelConverter::ChooseRows() {
    if (kind_ != Kind::Channels && kind_ != Kind::Grey) {
        return;
    }
    const bool from32 = source_ == kUsual32;
    const bool to32 = kind_ == Kind::Channels && target_ == kUsual32;
    const RowKernels::ConvertRow widen = WidenerOf(source_);
    const RowKernels::ConvertRow narrow = kind_ == Kind::Grey ? Kernels().from32ToGrey : NarrowerOf(target_);
    if (from32 && narrow != nullptr) {
        first_ = narrow;
    } else if (widen != nullptr && to32) {
        first_ = widen;
    } else if (widen != nullptr && narrow != nullptr) {
        first_ = widen;
        second_ = narrow;
    }
}

void PixelConverter::RunRows(const unsigned char* source, unsigned char* target, int count) const {
    if (second_ == nullptr) {
        first_(source, target, count);
        return;
    }
    unsigned char wide[kChunk * 4];
    for (int done = 0; done < count; done += kChunk) {
        const int part = std::min(kChunk, count - done);
        first_(source + ByteOffset(source_.bitsPerPixel, done), wide, part);
        second_(wide, target + ByteOffset(target_.bitsPerPixel, done), part);
    }
}

void PixelConverter::ConvertRow(const unsigned char* sourceRow, int sourceX, unsigned char* targetRow, int targetX,
                                int count) {
    if (count <= 0) {
        return;
    }
    const bool wholeBytes = source_.bitsPerPixel >= 8 && target_.bitsPerPixel >= 8;
    if (wholeBytes) {
        const unsigned char* const source = sourceRow + ByteOffset(source_.bitsPerPixel, sourceX);
        unsigned char* const target = targetRow + ByteOffset(target_.bitsPerPixel, targetX);
        if (IsIdentity()) {
            std::memmove(target, source, static_cast<std::size_t>(ByteOffset(source_.bitsPerPixel, count)));
            return;
        }
        if (first_ != nullptr) {
            RunRows(source, target, count);
            return;
        }
        if (kind_ == Kind::Table && target_.bitsPerPixel == 32) {
            for (int i = 0; i < count; ++i) {
                std::memcpy(target + static_cast<std::ptrdiff_t>(i) * 4, &table_[source[i]], 4);
            }
            return;
        }
    }
    DWORD values[kChunk];
    for (int done = 0; done < count; done += kChunk) {
        const int part = std::min(kChunk, count - done);
        LoadRow(sourceRow, source_.bitsPerPixel, sourceX + done, part, values);
        Map(values, values, part);
        StoreRow(targetRow, target_.bitsPerPixel, targetX + done, part, values);
    }
}

}   // namespace rastel::platform

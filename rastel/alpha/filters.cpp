// The mask filters: a square window slides over the plane. The cost of a pixel doesn't grow with the window: what
// enters below and leaves above changes a row of column sums, and so do the columns that enter and leave along a row.
#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>

#include "rastel/alpha/alpha_channel.h"
#include "rastel/display/display_manager.h"
#include "rastel/platform/user.h"
#include "rastel/surface/kernels.h"
#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/reference.h"

using rastel::PixelLock;
using rastel::Reference;
using rastel::kernels::BoxSums;
using rastel::kernels::filterPadding;
using rastel::kernels::Rows;

namespace {

// A plane with `radius` more on each side, or null.
Reference<CAlphaChannel> NewLargerPlane(const CAlphaChannel& plane, int radius) {
    CDisplayManager* const manager = GetDisplayManager();
    const std::int64_t width = static_cast<std::int64_t>(plane.GetWidth()) + 2 * radius;
    const std::int64_t height = static_cast<std::int64_t>(plane.GetHeight()) + 2 * radius;
    constexpr int limit = std::numeric_limits<int>::max() - 2 * filterPadding;   // kernels step beyond a row's end
    if (!manager || width > limit || height > limit) {
        return nullptr;
    }
    return Reference<CAlphaChannel>(manager->CreateAlphaChannel(static_cast<int>(width), static_cast<int>(height)));
}

// Elements with `before` zeros ahead of the first, which lies on a cache line's start, and room behind the last. Empty
// when there is no memory.
template <class Element>
class PaddedRow {
public:
    PaddedRow(int count, int before)
        : elements_(new (std::nothrow) Element[static_cast<std::size_t>(before) + static_cast<std::size_t>(count) +
                                               filterPadding + lineBytes / sizeof(Element)]()) {
        if (elements_) {
            first_ = elements_.get() + before;
            const auto excess = reinterpret_cast<std::uintptr_t>(first_) % lineBytes;
            first_ += (lineBytes - excess) % lineBytes / sizeof(Element);
        }
    }
    explicit operator bool() const { return elements_ != nullptr; }
    Element* First() { return first_; }

private:
    static constexpr std::size_t lineBytes = 64;
    std::unique_ptr<Element[]> elements_;
    Element* first_ = nullptr;
};

// Walks the rows of the result: `draw(row, entering, leaving)` is given the window's new bottom row and the one above
// its top, a row of zeros where the plane has none.
template <class Draw>
bool WalkRows(const PixelLock& source, int width, int height, const PixelLock& target, int radius, Draw draw) {
    PaddedRow<BYTE> zeros(width, 0);
    if (!zeros) {
        return false;
    }
    const int window = 2 * radius + 1;
    const auto row = [&](int y) -> const BYTE* { return y >= 0 && y < height ? source.At(0, y) : zeros.First(); };
    for (int y = 0; y < height + 2 * radius; ++y) {
        draw(target.At(0, y), row(y), row(y - window));
    }
    return true;
}

}   // namespace

CAlphaChannel* CAlphaChannel::Expand(int radius, int value) {
    radius = std::clamp(radius, 0, 20);
    Reference<CAlphaChannel> result = NewLargerPlane(*this, radius);
    if (!result) {
        return nullptr;
    }
    if (radius == 0) {
        return result->CopyBlt(0, 0, *this, nullptr, nullptr) ? result.release() : nullptr;
    }
    const PixelLock source(*this);
    if (!source) {
        return nullptr;
    }
    const PixelLock target(*result);
    if (!target) {
        return nullptr;
    }
    const int window = 2 * radius + 1;
    PaddedRow<BYTE> counts(m_Width, 0);
    const auto draw = [&](BYTE* row, const BYTE* entering, const BYTE* leaving) {
        Rows().countColumns(counts.First(), entering, leaving, m_Width);
        Rows().dilateRow(row, counts.First(), m_Width, window, static_cast<BYTE>(value));
    };
    return counts && WalkRows(source, m_Width, m_Height, target, radius, draw) ? result.release() : nullptr;
}

CAlphaChannel* CAlphaChannel::Blur(int radius) {
    radius = std::clamp(radius, 0, 30);
    Reference<CAlphaChannel> result = NewLargerPlane(*this, radius);
    if (!result) {
        return nullptr;
    }
    const PixelLock source(*this);
    if (!source) {
        return nullptr;
    }
    const PixelLock target(*result);
    if (!target) {
        return nullptr;
    }
    const int window = 2 * radius + 1;
    PaddedRow<WORD> even(m_Width / 2 + window, radius + 1), odd(m_Width / 2 + window, radius + 1);
    const BoxSums sums{even.First(), odd.First()};
    const auto draw = [&](BYTE* row, const BYTE* entering, const BYTE* leaving) {
        Rows().boxRow(row, sums, entering, leaving, m_Width, window);
    };
    const bool hasMemory = even && odd;
    return hasMemory && WalkRows(source, m_Width, m_Height, target, radius, draw) ? result.release() : nullptr;
}

int CAlphaChannel::Subtract(CAlphaChannel& other, int x, int y) {
    PixelLock target(*this);
    if (!target) {
        return 0;
    }
    const PixelLock shape(other);
    if (!shape) {
        return 0;
    }
    // What sticks out of this plane is cut off.
    const std::int64_t left = std::max<std::int64_t>(x, 0), top = std::max<std::int64_t>(y, 0);
    const std::int64_t right = std::min<std::int64_t>(static_cast<std::int64_t>(x) + other.GetWidth(), m_Width);
    const std::int64_t bottom = std::min<std::int64_t>(static_cast<std::int64_t>(y) + other.GetHeight(), m_Height);
    if (left < right && top < bottom) {
        Rows().subtractRect(target.At(static_cast<int>(left), static_cast<int>(top)), target.Pitch(),
                            shape.At(static_cast<int>(left - x), static_cast<int>(top - y)), shape.Pitch(),
                            static_cast<int>(right - left), static_cast<int>(bottom - top));
    }
    target.Unlock();   // before the other plane
    return 1;
}

int CAlphaChannel::TressHold(int level, unsigned char low, unsigned char high) {
    const PixelLock target(*this);
    if (!target) {
        return 0;
    }
    unsigned char* const bits = target.At(0, 0);
    if (level > 255) {
        Rows().fillBytesRect(bits, target.Pitch(), m_Width, m_Height, low);
    } else {
        Rows().thresholdRect(bits, target.Pitch(), m_Width, m_Height, static_cast<BYTE>(std::max(level, 0)), low, high);
    }
    return 1;
}

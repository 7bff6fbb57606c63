// The mask filters: a square window slides over the plane. The cost of a pixel doesn't grow with the window: what
// enters below and leaves above changes a row of column sums, and differences of their running total are window sums.
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

// Elements with `before` zeros ahead of the first and room behind the last. Empty when there is no memory.
template <class Element>
class PaddedRow {
public:
    PaddedRow(int count, int before)
        : before_(before),
          size_(static_cast<std::size_t>(before) + static_cast<std::size_t>(count) + filterPadding),
          elements_(new (std::nothrow) Element[size_]()) {}
    explicit operator bool() const { return elements_ != nullptr; }
    Element* First() { return elements_.get() + before_; }

private:
    int before_;
    std::size_t size_;
    std::unique_ptr<Element[]> elements_;
};

// Walks the rows of the result: `move(entering, leaving)` takes the window's new bottom row and the one above its top,
// a row of zeros where the plane has none, and `emit(row)` writes a row of the result.
template <class Move, class Emit>
bool WalkRows(const PixelLock& source, int width, int height, const PixelLock& target, int radius, Move move,
              Emit emit) {
    PaddedRow<BYTE> zeros(width, 0);
    if (!zeros) {
        return false;
    }
    const int window = 2 * radius + 1;
    const auto row = [&](int y) -> const BYTE* { return y >= 0 && y < height ? source.At(0, y) : zeros.First(); };
    for (int y = 0; y < height + 2 * radius; ++y) {
        move(row(y), row(y - window));
        emit(target.At(0, y));
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
    const auto move = [&](const BYTE* entering, const BYTE* leaving) {
        Rows().countColumns(counts.First(), entering, leaving, m_Width);
    };
    const auto emit = [&](BYTE* row) {
        Rows().dilateRow(row, counts.First(), m_Width, window, static_cast<BYTE>(value));
    };
    return counts && WalkRows(source, m_Width, m_Height, target, radius, move, emit) ? result.release() : nullptr;
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
    const int window = 2 * radius + 1, count = m_Width + 2 * radius;
    PaddedRow<WORD> sums(count, window);   // of up to 61 bytes each: 16 bits hold them
    PaddedRow<DWORD> prefix(count + 1, window);
    const auto move = [&](const BYTE* entering, const BYTE* leaving) {
        Rows().boxColumns(sums.First(), entering, leaving, m_Width);
    };
    const auto emit = [&](BYTE* row) { Rows().boxRow(row, sums.First(), prefix.First(), count, window); };
    const bool hasMemory = sums && prefix;
    return hasMemory && WalkRows(source, m_Width, m_Height, target, radius, move, emit) ? result.release() : nullptr;
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

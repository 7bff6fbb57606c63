// Packed DIBs: header, colour table and pixels in one block of global memory.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "rastel/image/dib.h"
#include "rastel/platform/kernel.h"

namespace winext {

namespace {

class LockedBlock {
public:
    explicit LockedBlock(HGLOBAL memory)
        : memory_(memory), bytes_(memory ? static_cast<unsigned char*>(::GlobalLock(memory)) : nullptr) {}
    ~LockedBlock() {
        if (bytes_) {
            ::GlobalUnlock(memory_);
        }
    }
    LockedBlock(const LockedBlock&) = delete;
    LockedBlock& operator=(const LockedBlock&) = delete;

    unsigned char* Bytes() const { return bytes_; }
    std::uint64_t Size() const { return ::GlobalSize(memory_); }

private:
    HGLOBAL memory_;
    unsigned char* bytes_;
};

constexpr std::size_t headerBytes = sizeof(BITMAPINFOHEADER);

}   // namespace

int CDib::LoadGlobal(HGLOBAL hGlobal) {
    const LockedBlock block(hGlobal);
    if (!block.Bytes() || block.Size() < headerBytes) {
        return 0;
    }
    BITMAPINFOHEADER header;
    std::memcpy(&header, block.Bytes(), headerBytes);
    const int width = header.biWidth, height = header.biHeight, bits = header.biBitCount;
    if (!IsDepth(bits) || width < 0) {
        return 0;
    }

    const std::uint64_t colors = bits > 8 ? 0 : std::uint64_t{1} << bits;
    const std::uint64_t storedColors = bits > 8 ? 0 : header.biClrUsed ? header.biClrUsed : colors;
    const std::uint64_t pixelsAt = headerBytes + storedColors * sizeof(RGBQUAD);
    const auto rowBytes = static_cast<std::uint64_t>(RowBytes(width, bits));   // below 2 to the 33
    const auto pixelBytes =
        static_cast<std::uint64_t>(std::abs(std::int64_t{height})) * rowBytes;   // below 2 to the 64
    if (pixelsAt > block.Size() || pixelBytes > block.Size() - pixelsAt || !Create(width, height, bits) || !m_pBits ||
        !m_pBitmapInfo) {
        return 0;
    }
    if (bits <= 8) {
        const auto tableBytes = static_cast<std::size_t>(colors) * sizeof(RGBQUAD);
        const auto there = static_cast<std::size_t>(std::min<std::uint64_t>(tableBytes, block.Size() - headerBytes));
        auto* const table = reinterpret_cast<unsigned char*>(m_pBitmapInfo) + headerBytes;
        std::memcpy(table, block.Bytes() + headerBytes, there);
        std::memset(table + there, 0, tableBytes - there);
    }
    std::memcpy(m_pBits, block.Bytes() + pixelsAt, static_cast<std::size_t>(pixelBytes));
    return 1;
}

HGLOBAL CDib::CreateGlobal() {
    if (!m_pBitmapInfo || !GetBits() || GetBitsPrPixel() < 15) {
        return nullptr;
    }
    const std::int64_t pixelBytes = std::int64_t{GetPitch()} * GetHeight();
    if (pixelBytes < 0 || pixelBytes > std::numeric_limits<int>::max()) {   // no image of this class is larger
        return nullptr;
    }
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, headerBytes + static_cast<std::size_t>(pixelBytes));
    if (!memory) {
        return nullptr;
    }
    const LockedBlock block(memory);
    if (!block.Bytes()) {
        ::GlobalFree(memory);
        return nullptr;
    }
    std::memcpy(block.Bytes(), m_pBitmapInfo, headerBytes);
    std::memcpy(block.Bytes() + headerBytes, GetBits(), static_cast<std::size_t>(pixelBytes));
    return memory;
}

}   // namespace winext

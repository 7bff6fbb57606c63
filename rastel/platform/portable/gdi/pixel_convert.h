// Rows of pixels from one format to another.
#pragma once

#include <vector>

#include "rastel/platform/portable/gdi/pixel_buffer.h"
#include "rastel/platform/portable/gdi/row_kernels.h"

namespace rastel::platform {

// How a conversion treats monochrome bitmaps, which have no colours of their own.
struct MonoColors {
    bool sourceIsMono = false;   // 0 becomes the text colour, 1 the background colour of the target context
    COLORREF text = 0;
    COLORREF back = 0x00FFFFFF;
    bool targetIsMono = false;   // 1 where the source has this colour, 0 elsewhere
    COLORREF match = 0x00FFFFFF;
    bool matchExactly = true;   // false: black or white, whichever is nearer
};

// Made once a drawing call; holds what it needs of the colour tables. Not for several threads at once: it remembers
// which index was the nearest to a colour.
class PixelConverter {
public:
    // Only formats and colour tables of the buffers count.
    PixelConverter(const PixelBuffer& source, const PixelBuffer& target, const MonoColors& mono);

    bool IsIdentity() const { return kind_ == Kind::Identity; }

    // Raw values to raw values; both may be the same array.
    void Map(const DWORD* source, DWORD* target, int count);

    // From pixel `sourceX` of one row to pixel `targetX` of another. They must not overlap, unless the formats are
    // the same and have 8 bits or more.
    void ConvertRow(const unsigned char* sourceRow, int sourceX, unsigned char* targetRow, int targetX, int count);

private:
    enum class Kind { Identity, Table, Channels, Nearest, Grey, Match };

    void MakeTable(const PixelBuffer& source, const PixelBuffer& target, const MonoColors& mono);
    void MakeChannels(const PixelFormat& source, const PixelFormat& target);
    void ChooseRows();
    void RunRows(const unsigned char* source, unsigned char* target, int count) const;
    DWORD NearestIndex(COLORREF color);

    Kind kind_ = Kind::Identity;
    PixelFormat source_;
    PixelFormat target_;

    // Whole rows at once where both formats are usual ones: one step, or two by way of 32 bits.
    RowKernels::ConvertRow first_ = nullptr;
    RowKernels::ConvertRow second_ = nullptr;

    std::vector<DWORD> table_;     // Table: 2 to the depth entries. Channels: three of 256, in place already
    int shifts_[3] = {};           // Channels: where the 8 or fewer bits of each begin,
    DWORD channelMasks_[3] = {};   // and how many

    std::vector<RGBQUAD> colors_;   // Nearest
    struct Remembered {
        COLORREF color;
        DWORD index;
    };
    std::vector<Remembered> cache_;

    DWORD match_ = 0;   // Match: what becomes 1
    DWORD matchMask_ = 0;
};

}   // namespace rastel::platform

#include "rastel/display/line_converters.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "rastel/display/palette_map.h"
#include "rastel/surface/kernels.h"
#include "rastel/surface/memory_span.h"

using rastel::kernels::PlainRows;
using rastel::kernels::Rows;
using rastel::kernels::SpanOf;

namespace {

using ConvertRect = void (*)(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height);

// Whole groups of 4 by the vector form, a strip of what is left by the plain one.
void ForStrips(ConvertRect vector, ConvertRect plain, unsigned char* dst, unsigned char* src, int width, int height,
               int dstPitch, int srcPitch) {
    if (width < 1) {
        return;   // however many rows: their addresses may lead nowhere
    }
    const int whole = width & ~3;
    vector(dst, dstPitch, src, srcPitch, whole, height);
    if (whole != width) {
        plain(dst + static_cast<std::ptrdiff_t>(whole) * 2, dstPitch, src + static_cast<std::ptrdiff_t>(whole) * 4,
              srcPitch, width - whole, height);
    }
}

void ForRect(ConvertRect convert, unsigned char* dst, unsigned char* src, int width, int height, int dstPitch,
             int srcPitch) {
    if (width > 0) {
        convert(dst, dstPitch, src, srcPitch, width, height);
    }
}

}   // namespace

void Blt555Line(unsigned char* dst, unsigned char* src, int width) {
    PlainRows().to555Rect(dst, 0, src, 0, width, 1);
}

void Blt555LineMMX(unsigned char* dst, unsigned char* src, int width) {
    Rows().to555Rect(dst, 0, src, 0, width & ~1, 1);
}

void Blt555LineMMX2(unsigned char* dst, unsigned char* src, int width) {
    Rows().to555Rect(dst, 0, src, 0, width & ~3, 1);
}

void Blt565Line(unsigned char* dst, unsigned char* src, int width) {
    PlainRows().to565Rect(dst, 0, src, 0, width, 1);
}

void Blt565LineMMX4(unsigned char* dst, unsigned char* src, int width) {
    Rows().to565Rect(dst, 0, src, 0, width & ~3, 1);
}

void Blt24Line(unsigned char* dst, unsigned char* src, int width) {
    Rows().to24Rect(dst, 0, src, 0, width, 1);
}

void Blt32Line(unsigned char* dst, unsigned char* src, int width) {
    if (width < 1) {
        return;
    }
    const auto bytes = static_cast<std::size_t>(width) * 4;
    const auto ahead = reinterpret_cast<std::uintptr_t>(src) - reinterpret_cast<std::uintptr_t>(dst);
    if (ahead == 0 || ahead >= bytes) {   // wraps for a source that lies before the target
        std::memmove(dst, src, bytes);    // the same as from the last word to the first
        return;
    }
    for (std::size_t at = bytes; at != 0; at -= 4) {   // what has been written is read again
        std::memmove(dst + at - 4, src + at - 4, 4);
    }
}

void Blt8Line(unsigned char* dst, unsigned char* src, int width) {
    Rows().toIndexRect(dst, 0, src, 0, rastel::PaletteMap(), width, 1);
}

void Blt555(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch) {
    ForRect(PlainRows().to555Rect, dst, src, width, height, dstPitch, srcPitch);
}

void Blt555MMX(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch) {
    ForStrips(Rows().to555Rect, PlainRows().to555Rect, dst, src, width, height, dstPitch, srcPitch);
}

void Blt565(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch) {
    ForRect(PlainRows().to565Rect, dst, src, width, height, dstPitch, srcPitch);
}

void Blt565MMX(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch) {
    ForStrips(Rows().to565Rect, PlainRows().to565Rect, dst, src, width, height, dstPitch, srcPitch);
}

void Blt24(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch) {
    ForRect(Rows().to24Rect, dst, src, width, height, dstPitch, srcPitch);
}

void Blt32(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch) {
    if (width < 1 || height < 1) {
        return;
    }
    const std::size_t bytes = static_cast<std::size_t>(width) * 4;
    if (!SpanOf(dst, dstPitch, bytes, height).Meets(SpanOf(src, srcPitch, bytes, height))) {
        Rows().copyRect(dst, dstPitch, src, srcPitch, width, height);
        return;
    }
    for (int y = 0; y < height; ++y, dst += dstPitch, src += srcPitch) {
        Blt32Line(dst, src, width);
    }
}

void Blt8(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch) {
    if (width > 0) {
        Rows().toIndexRect(dst, dstPitch, src, srcPitch, rastel::PaletteMap(), width, height);
    }
}

#include "rastel/display/line_converters.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "rastel/display/palette_map.h"
#include "rastel/surface/kernels.h"

using rastel::kernels::PlainRows;
using rastel::kernels::Rows;

namespace {

using LineFunction = void (*)(unsigned char* dst, unsigned char* src, int width);

void ForRows(LineFunction line, unsigned char* dst, unsigned char* src, int width, int height, int dstPitch,
             int srcPitch) {
    if (width < 1) {
        return;   // however many rows: their addresses may lead nowhere
    }
    for (int y = 0; y < height; ++y) {
        line(dst, src, width);
        dst += dstPitch;
        src += srcPitch;
    }
}

// Whole groups of 4 by the vector form, a strip of what is left by the plain one.
void ForStrips(LineFunction vector, LineFunction plain, unsigned char* dst, unsigned char* src, int width, int height,
               int dstPitch, int srcPitch) {
    if (width < 1 || height < 1) {
        return;
    }
    const int whole = width & ~3;
    ForRows(vector, dst, src, whole, height, dstPitch, srcPitch);
    if (whole != width) {
        ForRows(plain, dst + static_cast<std::ptrdiff_t>(whole) * 2, src + static_cast<std::ptrdiff_t>(whole) * 4,
                width - whole, height, dstPitch, srcPitch);
    }
}

}   // namespace

void Blt555Line(unsigned char* dst, unsigned char* src, int width) {
    PlainRows().to555Row(dst, src, width);
}

void Blt555LineMMX(unsigned char* dst, unsigned char* src, int width) {
    Rows().to555Row(dst, src, width & ~1);
}

void Blt555LineMMX2(unsigned char* dst, unsigned char* src, int width) {
    Rows().to555Row(dst, src, width & ~3);
}

void Blt565Line(unsigned char* dst, unsigned char* src, int width) {
    PlainRows().to565Row(dst, src, width);
}

void Blt565LineMMX4(unsigned char* dst, unsigned char* src, int width) {
    Rows().to565Row(dst, src, width & ~3);
}

void Blt24Line(unsigned char* dst, unsigned char* src, int width) {
    Rows().to24Row(dst, src, width);
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
    Rows().toIndexRow(dst, src, rastel::PaletteMap(), width);
}

void Blt555(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch) {
    ForRows(Blt555Line, dst, src, width, height, dstPitch, srcPitch);
}

void Blt555MMX(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch) {
    ForStrips(Blt555LineMMX2, Blt555Line, dst, src, width, height, dstPitch, srcPitch);
}

void Blt565(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch) {
    ForRows(Blt565Line, dst, src, width, height, dstPitch, srcPitch);
}

void Blt565MMX(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch) {
    ForStrips(Blt565LineMMX4, Blt565Line, dst, src, width, height, dstPitch, srcPitch);
}

void Blt24(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch) {
    ForRows(Blt24Line, dst, src, width, height, dstPitch, srcPitch);
}

void Blt32(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch) {
    ForRows(Blt32Line, dst, src, width, height, dstPitch, srcPitch);
}

void Blt8(unsigned char* dst, unsigned char* src, int width, int height, int dstPitch, int srcPitch) {
    ForRows(Blt8Line, dst, src, width, height, dstPitch, srcPitch);
}

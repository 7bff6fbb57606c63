// The plain forms: what each kernel means, a pixel at a time.
#include <algorithm>
#include <cstring>

#include "rastel/surface/blend_plain.h"
#include "rastel/surface/kernel_tables.h"
#include "rastel/surface/texel_walk.h"

namespace rastel::kernels {

namespace {

DWORD LoadPixel(const BYTE* at) {
    DWORD pixel;
    std::memcpy(&pixel, at, sizeof(pixel));
    return pixel;
}

void StorePixel(BYTE* at, DWORD pixel) {
    std::memcpy(at, &pixel, sizeof(pixel));
}

template <class Row>
void ForRows(BYTE* target, int targetPitch, int height, Row row) {
    for (int y = 0; y < height; ++y, target += targetPitch) {
        row(target);
    }
}

template <class Row>
void ForRows(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int height, Row row) {
    for (int y = 0; y < height; ++y, target += targetPitch, source += sourcePitch) {
        row(target, source);
    }
}

// Bits 8 to 15 of the product: what is left of (byte * factor) >> 8, whatever the factor's sign and size.
BYTE Scaled(BYTE byte, DWORD factor) {
    return static_cast<BYTE>(byte * factor >> 8);
}

void CopyBytesRect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height) {
    if (width < 1) {
        return;
    }
    ForRows(target, targetPitch, source, sourcePitch, height,
            [=](BYTE* t, const BYTE* s) { std::memmove(t, s, static_cast<std::size_t>(width)); });
}

void CopyRect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height) {
    CopyBytesRect(target, targetPitch, source, sourcePitch, width * 4, height);
}

void FillRect(BYTE* target, int targetPitch, int width, int height, DWORD pixel) {
    ForRows(target, targetPitch, height, [=](BYTE* t) {
        for (int x = 0; x < width; ++x) {
            StorePixel(t + x * 4, pixel);
        }
    });
}

void KeyCopyRect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height, DWORD key) {
    ForRows(target, targetPitch, source, sourcePitch, height, [=](BYTE* t, const BYTE* s) {
        for (int x = 0; x < width; ++x) {
            const DWORD color = LoadPixel(s + x * 4) & 0xFFFFFF;
            if (color != (key & 0xFFFFFF)) {
                StorePixel(t + x * 4, color);
            }
        }
    });
}

void ShadowRect(BYTE* target, int targetPitch, int width, int height, DWORD factor) {
    ForRows(target, targetPitch, height, [=](BYTE* t) {
        for (int i = 0; i < width * 4; ++i) {
            t[i] = Scaled(t[i], factor);
        }
    });
}

void FillBytesRect(BYTE* target, int targetPitch, int width, int height, BYTE value) {
    if (width < 1) {
        return;
    }
    ForRows(target, targetPitch, height, [=](BYTE* t) { std::memset(t, value, static_cast<std::size_t>(width)); });
}

void MergeRect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height) {
    ForRows(target, targetPitch, source, sourcePitch, height, [=](BYTE* t, const BYTE* s) {
        for (int x = 0; x < width; ++x) {
            t[x] = static_cast<BYTE>(t[x] * s[x] >> 8);
        }
    });
}

void MaxRect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height) {
    ForRows(target, targetPitch, source, sourcePitch, height, [=](BYTE* t, const BYTE* s) {
        for (int x = 0; x < width; ++x) {
            t[x] = std::max(t[x], s[x]);
        }
    });
}

void MultiplyRect(BYTE* target, int targetPitch, int width, int height, int factor) {
    ForRows(target, targetPitch, height, [=](BYTE* t) {
        for (int x = 0; x < width; ++x) {
            t[x] = Scaled(t[x], static_cast<DWORD>(factor));
        }
    });
}

void InvertRect(BYTE* target, int targetPitch, int width, int height) {
    ForRows(target, targetPitch, height, [=](BYTE* t) {
        for (int x = 0; x < width; ++x) {
            t[x] = static_cast<BYTE>(255 - t[x]);
        }
    });
}

void TransparentMaskRect(BYTE* plane, int planePitch, const BYTE* source, int sourcePitch, int width, int height,
                         DWORD color) {
    ForRows(plane, planePitch, source, sourcePitch, height, [=](BYTE* p, const BYTE* s) {
        for (int x = 0; x < width; ++x) {
            if (LoadPixel(s + x * 4) == color) {
                p[x] = 0;
            }
        }
    });
}

void OpaqueMaskRect(BYTE* plane, int planePitch, const BYTE* source, int sourcePitch, int width, int height,
                    DWORD color) {
    ForRows(plane, planePitch, source, sourcePitch, height, [=](BYTE* p, const BYTE* s) {
        for (int x = 0; x < width; ++x) {
            if (LoadPixel(s + x * 4) != color) {
                p[x] = 255;
            }
        }
    });
}

void SplitAlphaRect(BYTE* target, int targetPitch, BYTE* plane, int planePitch, const BYTE* source, int sourcePitch,
                    int width, int height) {
    CopyRect(target, targetPitch, source, sourcePitch, width, height);
    ForRows(plane, planePitch, source, sourcePitch, height, [=](BYTE* p, const BYTE* s) {
        for (int x = 0; x < width; ++x) {
            p[x] = s[x * 4 + 3];
        }
    });
}

void KeyMaskRect(BYTE* plane, int planePitch, const BYTE* source, int sourcePitch, int width, int height, DWORD key,
                 BYTE outside, BYTE inside) {
    ForRows(plane, planePitch, source, sourcePitch, height, [=](BYTE* p, const BYTE* s) {
        for (int x = 0; x < width; ++x) {
            p[x] = ((LoadPixel(s + x * 4) ^ key) & 0xFFFFFF) == 0 ? outside : inside;
        }
    });
}

void ThresholdRect(BYTE* plane, int planePitch, int width, int height, BYTE level, BYTE low, BYTE high) {
    ForRows(plane, planePitch, height, [=](BYTE* p) {
        for (int x = 0; x < width; ++x) {
            p[x] = p[x] >= level ? high : low;
        }
    });
}

void SubtractRect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height) {
    ForRows(target, targetPitch, source, sourcePitch, height, [=](BYTE* t, const BYTE* s) {
        for (int x = 0; x < width; ++x) {
            if (s[x] != 0) {
                t[x] = 0;
            }
        }
    });
}

void BoxRow(BYTE* target, const BoxSums& sums, const BYTE* entering, const BYTE* leaving, int width, int window) {
    for (int x = 0; x < width; ++x) {
        WORD& sum = sums.At(x);
        sum = static_cast<WORD>(sum + entering[x] - leaving[x]);
    }
    int total = 0;
    for (int x = 0; x < width + window - 1; ++x) {
        total += sums.At(x) - sums.At(x - window);
        target[x] = static_cast<BYTE>(total / (window * window));
    }
}

void CountColumns(BYTE* counts, const BYTE* entering, const BYTE* leaving, int width) {
    for (int x = 0; x < width; ++x) {
        counts[x] = static_cast<BYTE>(counts[x] + (entering[x] != 0) - (leaving[x] != 0));
    }
}

void DilateRow(BYTE* target, const BYTE* counts, int width, int window, BYTE value) {
    int sinceLast = window;
    for (int x = 0; x < width + window - 1; ++x) {
        sinceLast = x < width && counts[x] != 0 ? 0 : sinceLast + 1;
        target[x] = sinceLast < window ? value : 0;
    }
}

void TextureRow(BYTE* target, const BYTE* source, int sourcePitch, int count, TexelLine line) {
    TexelsInTurn(target, source, sourcePitch, count, {line});
}

void TextureBytesRow(BYTE* target, const BYTE* source, int sourcePitch, int count, TexelLine line) {
    TexelsInTurn<1>(target, source, sourcePitch, count, {line});
}

void TextureBlendRow(BYTE* target, const BYTE* source, const BYTE* alpha, int count) {
    for (int i = 0; i < count; ++i, target += 4, source += 4) {
        const int weight = alpha[i] * 256 / 255;
        for (int c = 0; c < 3; ++c) {
            target[c] = static_cast<BYTE>((target[c] * (256 - weight) + source[c] * weight) >> 8);
        }
    }
}

// `combine(target, walk)` for each pixel of a row.
template <class Combine>
void AlongLine(BYTE* target, int count, const TexelWalk& walk, Combine combine) {
    for (int i = 0; i < count; ++i) {
        combine(target + i * 4, walk.After(i));
    }
}

const BYTE* TexelAt(const BYTE* source, std::ptrdiff_t pitch, const TexelWalk& at, int bytesPerPixel) {
    return source + at.Row() * pitch + static_cast<std::ptrdiff_t>(at.Column()) * bytesPerPixel;
}

void TextureKeyRow(BYTE* target, const BYTE* source, int sourcePitch, int count, TexelLine line, DWORD key) {
    AlongLine(target, count, {line}, [=](BYTE* t, const TexelWalk& at) {
        KeyCopyRect(t, 0, TexelAt(source, sourcePitch, at, 4), 0, 1, 1, key);
    });
}

void TexturePlaneRow(BYTE* target, const BYTE* source, int sourcePitch, const BYTE* plane, int planePitch, int count,
                     TexelLine line) {
    AlongLine(target, count, {line}, [=](BYTE* t, const TexelWalk& at) {
        TextureBlendRow(t, TexelAt(source, sourcePitch, at, 4), TexelAt(plane, planePitch, at, 1), 1);
    });
}

void TextureTile(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int count,
                 const TexelLine* lines) {
    TexelTile{target, targetPitch, count, lines}.ForRows(
        [=](BYTE* row, TexelLine line) { TextureRow(row, source, sourcePitch, count, line); });
}

void TextureBytesTile(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int count,
                      const TexelLine* lines) {
    TexelTile{target, targetPitch, count, lines}.ForRows(
        [=](BYTE* row, TexelLine line) { TextureBytesRow(row, source, sourcePitch, count, line); });
}

void TextureKeyTile(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int count,
                    const TexelLine* lines, DWORD key) {
    TexelTile{target, targetPitch, count, lines}.ForRows(
        [=](BYTE* row, TexelLine line) { TextureKeyRow(row, source, sourcePitch, count, line, key); });
}

void TexturePlaneTile(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, const BYTE* plane,
                      int planePitch, int count, const TexelLine* lines) {
    TexelTile{target, targetPitch, count, lines}.ForRows(
        [=](BYTE* row, TexelLine line) { TexturePlaneRow(row, source, sourcePitch, plane, planePitch, count, line); });
}

// convert(target, source) for each pixel; the target's have `bytes` each.
template <class Convert>
void ConvertPixels(BYTE* target, int targetPitch, int bytes, const BYTE* source, int sourcePitch, int width, int height,
                   Convert convert) {
    for (int y = 0; y < height; ++y, target += targetPitch, source += sourcePitch) {
        for (int x = 0; x < width; ++x) {
            convert(target + x * bytes, source + x * 4);
        }
    }
}

// One pixel as the display's word, its channels cut.
template <class Word>
void ToWords(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height, Word word) {
    ConvertPixels(target, targetPitch, 2, source, sourcePitch, width, height, [=](BYTE* to, const BYTE* from) {
        const auto packed = static_cast<WORD>(word(LoadPixel(from)));
        std::memcpy(to, &packed, sizeof(packed));
    });
}

void To555Rect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height) {
    ToWords(target, targetPitch, source, sourcePitch, width, height,
            [](DWORD p) { return (p >> 3 & 0x1F) | (p >> 6 & 0x3E0) | (p >> 9 & 0x7C00); });
}

void To565Rect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height) {
    ToWords(target, targetPitch, source, sourcePitch, width, height,
            [](DWORD p) { return (p >> 3 & 0x1F) | (p >> 5 & 0x7E0) | (p >> 8 & 0xF800); });
}

void To24Rect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, int width, int height) {
    ConvertPixels(target, targetPitch, 3, source, sourcePitch, width, height,
                  [](BYTE* to, const BYTE* from) { std::memcpy(to, from, 3); });
}

void ToIndexRect(BYTE* target, int targetPitch, const BYTE* source, int sourcePitch, const BYTE* map, int width,
                 int height) {
    ConvertPixels(target, targetPitch, 1, source, sourcePitch, width, height, [=](BYTE* to, const BYTE* from) {
        const DWORD p = LoadPixel(from);
        *to = map[(p >> 21 & 7) | (p >> 10 & 0x38) | (p << 1 & 0x1C0)];
    });
}

}   // namespace

const RowTable plainTable = {
    .name = "plain",
    .runsHere = [] { return true; },
    .copyRect = CopyRect,
    .fillRect = FillRect,
    .keyCopyRect = KeyCopyRect,
    .shadowRect = ShadowRect,
    .copyBytesRect = CopyBytesRect,
    .fillBytesRect = FillBytesRect,
    .mergeRect = MergeRect,
    .maxRect = MaxRect,
    .multiplyRect = MultiplyRect,
    .invertRect = InvertRect,
    .transparentMaskRect = TransparentMaskRect,
    .opaqueMaskRect = OpaqueMaskRect,
    .splitAlphaRect = SplitAlphaRect,
    .keyMaskRect = KeyMaskRect,
    .alphaRect = plain::AlphaRect,
    .alphaColorRect = plain::AlphaColorRect,
    .alphaConstRect = plain::AlphaConstRect,
    .alphaConstTransRect = plain::AlphaConstTransRect,
    .alphaAdvRect = plain::AlphaAdvRect,
    .alphaColorAdvRect = plain::AlphaColorAdvRect,
    .thresholdRect = ThresholdRect,
    .subtractRect = SubtractRect,
    .boxRow = BoxRow,
    .countColumns = CountColumns,
    .dilateRow = DilateRow,
    .textureRow = TextureRow,
    .textureBytesRow = TextureBytesRow,
    .textureKeyRow = TextureKeyRow,
    .texturePlaneRow = TexturePlaneRow,
    .textureTile = TextureTile,
    .textureBytesTile = TextureBytesTile,
    .textureKeyTile = TextureKeyTile,
    .texturePlaneTile = TexturePlaneTile,
    .textureBlendRow = TextureBlendRow,
    .to555Rect = To555Rect,
    .to565Rect = To565Rect,
    .to24Rect = To24Rect,
    .toIndexRect = ToIndexRect,
};

}   // namespace rastel::kernels

#include "rastel/platform/portable/gdi/blit.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <optional>

#include "rastel/platform/portable/gdi/average.h"
#include "rastel/platform/portable/gdi/paint.h"
#include "rastel/platform/portable/gdi/pick_plan.h"
#include "rastel/platform/portable/gdi/pixel_convert.h"
#include "rastel/platform/portable/gdi/pixel_rows.h"
#include "rastel/platform/portable/gdi/stretch.h"

namespace rastel::platform {

namespace {

std::size_t BytesOf(const PixelFormat& format, int count) {
    return (static_cast<std::size_t>(count) * static_cast<std::size_t>(format.bitsPerPixel) + 7) / 8;
}

// First and last address of a buffer, whatever way its rows run.
void AddressRange(const PixelBuffer& pixels, std::uintptr_t* first, std::uintptr_t* last) {
    const auto top = reinterpret_cast<std::uintptr_t>(pixels.Row(0));
    const auto bottom = reinterpret_cast<std::uintptr_t>(pixels.Row(pixels.height - 1));
    *first = std::min(top, bottom);
    *last = std::max(top, bottom) + BytesOf(pixels.format, pixels.width);
}

bool ShareMemory(const PixelBuffer& first, const PixelBuffer& second) {
    std::uintptr_t first1, last1, first2, last2;
    AddressRange(first, &first1, &last1);
    AddressRange(second, &first2, &last2);
    return first1 < last2 && first2 < last1;
}

// One blit: what stays the same for all visible rectangles of the target.
class BlitRun {
public:
    BlitRun(const DeviceContext& context, const StretchAxis& columns, const StretchAxis& rows, const BlitSource& source,
            RasterOp operation)
        : context_(context),
          columns_(columns),
          rows_(rows),
          source_(source),
          operation_(operation),
          averages_(context.state.stretchMode == HALFTONE && (columns.Shrinks() || rows.Shrinks())) {}

    void Draw(const Canvas& canvas, const RECT& area);

private:
    MonoColors MonoRules(const Canvas& canvas) const {
        MonoColors mono;
        mono.sourceIsMono = source_.isMono;
        mono.text = ResolveColor(context_, context_.state.textColor);
        mono.back = ResolveColor(context_, context_.state.backColor);
        mono.targetIsMono = canvas.isMono;
        mono.match = source_.background;
        mono.matchExactly = source_.hasBackground;
        return mono;
    }

    void CopyRows(const Canvas& canvas, const RECT& area);
    void CopyScaled(const Canvas& canvas, const RECT& area);
    void MixRows(const Canvas& canvas, const RECT& area);

    void PickRow(const unsigned char* source, unsigned char* target) const;

    // The source row for a target row as raw values in the format of the target.
    void MappedRow(int y, const RECT& area, DWORD* values);

    const DeviceContext& context_;
    const StretchAxis& columns_;
    const StretchAxis& rows_;
    const BlitSource& source_;
    const RasterOp operation_;
    const bool averages_;
    std::optional<PixelConverter> converter_;
    std::optional<BoxAverager> averager_;
    std::vector<int> picked_;   // source column of each target column of the area
    PickPlan plan_;
    PickPlan32 plan32_;
    bool hasPlan_ = false;
    bool hasPlan32_ = false;
};

void BlitRun::Draw(const Canvas& canvas, const RECT& area) {
    if (averages_) {
        MonoColors mono = MonoRules(canvas);
        averager_.emplace(source_.pixels, mono, columns_, rows_, area.left, area.right - area.left);
        mono.sourceIsMono = false;
        PixelBuffer averaged;
        averaged.format = FormatOfDepth(32);
        converter_.emplace(averaged, canvas.pixels, mono);
    } else if (!converter_) {
        converter_.emplace(source_.pixels, canvas.pixels, MonoRules(canvas));
    }
    if (!columns_.IsPlain() && !averages_) {
        picked_.resize(static_cast<std::size_t>(area.right - area.left));
        columns_.Fill(area.left, area.right - area.left, picked_.data());
        constexpr int kRowsThatPay = 4;   // below, making the plan costs more than it saves
        const PixelFormat& format = source_.pixels.format;
        const int count = area.right - area.left;
        const bool pays = area.bottom - area.top >= kRowsThatPay;
        hasPlan32_ = pays && format.bitsPerPixel == 32 && Kernels().pick32 != nullptr &&
                     plan32_.Make(picked_.data(), count, source_.pixels.width);
        hasPlan_ = pays && format.bitsPerPixel >= 8 && format.bitsPerPixel < 32 && Kernels().pick != nullptr &&
                   plan_.Make(picked_.data(), count, format.bitsPerPixel / 8,
                              static_cast<std::int64_t>(BytesOf(format, source_.pixels.width)));
    }
    if (!(operation_ == kSourceCopy)) {
        MixRows(canvas, area);
    } else if (columns_.IsPlain() && rows_.IsPlain() && !averages_) {
        CopyRows(canvas, area);
    } else {
        CopyScaled(canvas, area);
    }
}

void BlitRun::CopyRows(const Canvas& canvas, const RECT& area) {
    const int sourceX = columns_.SourceOf(area.left);
    const int targetX = area.left - canvas.origin.x;
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const int sourceY = rows_.SourceOf(area.top);
    const int targetY = area.top - canvas.origin.y;
    // Within one picture the rows go from the far end, so that none is overwritten before it was read.
    const bool upwards = source_.pixels.bits == canvas.pixels.bits && targetY > sourceY;
    for (int i = 0; i < height; ++i) {
        const int row = upwards ? height - 1 - i : i;
        converter_->ConvertRow(source_.pixels.Row(sourceY + row), sourceX, canvas.pixels.Row(targetY + row), targetX,
                               width);
    }
}

void BlitRun::CopyScaled(const Canvas& canvas, const RECT& area) {
    const int sourceBits = source_.pixels.format.bitsPerPixel;
    const int targetBits = canvas.pixels.format.bitsPerPixel;
    const int targetX = area.left - canvas.origin.x;
    const int width = area.right - area.left;
    const bool picks = !columns_.IsPlain() && !averages_ && sourceBits >= 8;
    const bool picksInPlace = picks && converter_->IsIdentity();
    const bool passesRows = columns_.IsPlain() && !averages_;
    std::vector<unsigned char> scratch(picks && !picksInPlace ? BytesOf(source_.pixels.format, width) : 0);
    std::vector<DWORD> values(picks || passesRows ? 0 : static_cast<std::size_t>(width));
    const unsigned char* drawn = nullptr;
    int drawnFrom = -1;
    int drawnTo = -1;
    for (int y = area.top; y < area.bottom; ++y) {
        unsigned char* const row = canvas.pixels.Row(y - canvas.origin.y);
        int from = rows_.SourceOf(y);
        int to = from + 1;
        if (averages_) {
            rows_.BoxOf(y, &from, &to);
        }
        if (drawn != nullptr && from == drawnFrom && to == drawnTo && targetBits >= 8) {
            const std::ptrdiff_t offset = ByteOffset(targetBits, targetX);
            std::memcpy(row + offset, drawn + offset, BytesOf(canvas.pixels.format, width));
            continue;
        }
        const unsigned char* const sourceRow = source_.pixels.Row(from);
        if (passesRows) {
            converter_->ConvertRow(sourceRow, columns_.SourceOf(area.left), row, targetX, width);
        } else if (picksInPlace) {
            PickRow(sourceRow, row + ByteOffset(targetBits, targetX));
        } else if (picks) {
            PickRow(sourceRow, scratch.data());
            converter_->ConvertRow(scratch.data(), 0, row, targetX, width);
        } else {
            MappedRow(y, area, values.data());
            StoreRow(row, targetBits, targetX, width, values.data());
        }
        drawn = row;
        drawnFrom = from;
        drawnTo = to;
    }
}

void BlitRun::PickRow(const unsigned char* source, unsigned char* target) const {
    if (hasPlan32_) {
        Kernels().pick32(source, plan32_, target);
    } else if (hasPlan_) {
        Kernels().pick(source, plan_, target);
    } else {
        PickPixels(source, source_.pixels.format.bitsPerPixel, picked_.data(), static_cast<int>(picked_.size()),
                   target);
    }
}

void BlitRun::MappedRow(int y, const RECT& area, DWORD* values) {
    const int width = area.right - area.left;
    const PixelBuffer& pixels = source_.pixels;
    if (averages_) {
        averager_->Row(y, values);
    } else if (columns_.IsPlain()) {
        LoadRow(pixels.Row(rows_.SourceOf(y)), pixels.format.bitsPerPixel, columns_.SourceOf(area.left), width, values);
    } else {
        const unsigned char* const row = pixels.Row(rows_.SourceOf(y));
        for (int i = 0; i < width; ++i) {
            values[i] = LoadPixel(row, pixels.format.bitsPerPixel, picked_[static_cast<std::size_t>(i)]);
        }
    }
    converter_->Map(values, values, width);
}

void BlitRun::MixRows(const Canvas& canvas, const RECT& area) {
    const int bitsPerPixel = canvas.pixels.format.bitsPerPixel;
    const int targetX = area.left - canvas.origin.x;
    const int width = area.right - area.left;
    BrushPixels brush(context_, *context_.state.brush, canvas);
    std::vector<DWORD> source(static_cast<std::size_t>(width));
    std::vector<DWORD> pattern(source.size());
    std::vector<DWORD> mixed(source.size());
    for (int y = area.top; y < area.bottom; ++y) {
        unsigned char* const row = canvas.pixels.Row(y - canvas.origin.y);
        MappedRow(y, area, source.data());
        if (operation_.NeedsPattern()) {
            brush.Row(area.left, y, width, pattern.data());
        }
        if (operation_.NeedsTarget()) {
            LoadRow(row, bitsPerPixel, targetX, width, mixed.data());
        }
        operation_.Apply(pattern.data(), source.data(), mixed.data(), width);
        StoreRow(row, bitsPerPixel, targetX, width, mixed.data());
    }
}

// A copy of the rows that are read, for sources that share memory with their target. Column numbers stay.
bool CopySource(BlitSource* source, StretchAxis* rows, const BlitRect& to, const BlitRect& from, PixelMemory* memory) {
    const int first = rows->SourceFirst();
    const int count = rows->SourceLast() - first;
    PixelBuffer& pixels = source->pixels;
    const std::size_t bytes = BytesOf(pixels.format, pixels.width);
    const auto pitch = static_cast<std::int64_t>((bytes + 3) & ~std::size_t{3});
    if (count <= 0 || !memory->Allocate(pitch * count)) {
        return false;
    }
    for (int y = 0; y < count; ++y) {
        std::memcpy(memory->Data() + y * pitch, pixels.Row(first + y), bytes);
    }
    pixels.bits = memory->Data();
    pixels.pitch = static_cast<int>(pitch);
    pixels.height = count;
    *rows = StretchAxis(to.y, to.height, from.y - first, from.height, count);
    return true;
}

}   // namespace

bool Blit(DeviceContext& target, const BlitRect& to, const BlitSource& source, const BlitRect& from,
          RasterOp operation) try {
    const StretchAxis columns(to.x, to.width, from.x, from.width, source.pixels.width);
    StretchAxis rows(to.y, to.height, from.y, from.height, source.pixels.height);
    Region clip;
    if (!EffectiveClip(target, &clip)) {
        return false;
    }
    if (columns.IsEmpty() || rows.IsEmpty() || (operation.NeedsPattern() && target.state.brush->style == BS_NULL)) {
        return true;
    }
    clip.Intersect(ClampedRect(columns.First(), rows.First(), columns.Last(), rows.Last()));
    if (clip.IsEmpty()) {
        return true;
    }

    BlitSource readable = source;
    PixelMemory copy;
    if (target.IsMemory()) {
        const PixelBuffer pixels = BitmapCanvas(target).pixels;
        if (ShareMemory(source.pixels, pixels)) {
            // Rows that only move can be ordered so that each is read in time.
            const bool moves = columns.IsPlain() && rows.IsPlain() && operation == kSourceCopy &&
                               source.pixels.bits == pixels.bits && source.pixels.pitch == pixels.pitch &&
                               source.pixels.format == pixels.format && pixels.format.bitsPerPixel >= 8 &&
                               clip.Complexity() == SIMPLEREGION;
            if (!moves && !CopySource(&readable, &rows, to, from, &copy)) {
                return false;
            }
        }
    }
    BlitRun run(target, columns, rows, readable, operation);
    const Access access = operation.NeedsTarget() ? Access::ReadWrite : Access::Write;
    return DrawInside(target, clip, access, [&run](const Canvas& canvas, const RECT& area) { run.Draw(canvas, area); });
} catch (const std::bad_alloc&) {
    return false;
}

bool OpenSource(DeviceContext& source, const RECT& area, PixelMemory* memory, std::vector<RGBQUAD>* colors,
                BlitSource* opened, POINT* origin) try {
    opened->background = ResolveColor(source, source.state.backColor);
    if (source.IsMemory()) {
        const Canvas canvas = BitmapCanvas(source);
        opened->pixels = canvas.pixels;
        opened->isMono = canvas.isMono;
        *origin = {};
        return true;
    }
    SIZE size{};
    if (!TargetSize(source, &size)) {
        return false;
    }
    Region whole(RECT{0, 0, size.cx, size.cy});
    whole.Intersect(area);
    if (whole.IsEmpty()) {
        opened->pixels = {};
        return true;
    }
    bool copied = false;
    const auto copyOut = [&](const Canvas& canvas, const RECT& read) {
        const std::size_t bytes = BytesOf(canvas.pixels.format, read.right - read.left);
        const auto pitch = static_cast<std::int64_t>((bytes + 3) & ~std::size_t{3});
        if (!memory->Allocate(pitch * (read.bottom - read.top))) {
            return;
        }
        PixelBuffer& pixels = opened->pixels;
        pixels = canvas.pixels;
        pixels.bits = memory->Data();
        pixels.pitch = static_cast<int>(pitch);
        pixels.width = read.right - read.left;
        pixels.height = read.bottom - read.top;
        if (canvas.pixels.colors != nullptr) {
            colors->assign(canvas.pixels.colors, canvas.pixels.colors + canvas.pixels.colorCount);
            pixels.colors = colors->data();
        }
        for (int y = 0; y < pixels.height; ++y) {
            std::memcpy(pixels.Row(y), canvas.pixels.Row(y), bytes);
        }
        *origin = {read.left, read.top};
        copied = true;
    };
    return DrawInside(source, whole, Access::Read, copyOut) && copied;
} catch (const std::bad_alloc&) {
    return false;
}

}   // namespace rastel::platform

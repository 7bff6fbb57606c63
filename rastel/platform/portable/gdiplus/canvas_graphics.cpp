#include "rastel/platform/portable/gdiplus/canvas_graphics.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace rastel::platform::gdip {

namespace {

// Straight over straight. `cover` is the source's alpha times its coverage, of 255 * 255; all sums fit 64 bits.
DWORD Over(DWORD target, DWORD source, DWORD coverage) {
    const std::uint64_t cover = std::uint64_t{source >> 24} * coverage;
    const std::uint64_t kept = (target >> 24) * (65025 - cover);
    const std::uint64_t whole = cover * 255 + kept;   // the new alpha, times 65025
    const std::uint64_t alpha = (whole + 65025 / 2) / 65025;
    if (cover == 0 || alpha == 0) {
        return target;
    }
    const auto channel = [&](int shift) {
        const std::uint64_t from = (source >> shift) & 0xFF, to = (target >> shift) & 0xFF;
        return static_cast<DWORD>((from * cover * 255 + to * kept + whole / 2) / whole) << shift;
    };
    return static_cast<DWORD>(alpha) << 24 | channel(16) | channel(8) | channel(0);
}

// The source in place of the target, as far as it covers.
DWORD Instead(DWORD target, DWORD source, DWORD coverage) {
    if (coverage == 255) {
        return source;
    }
    const DWORD come = (source >> 24) * coverage, stay = (target >> 24) * (255 - coverage), whole = come + stay;
    if (whole == 0) {
        return target & 0x00FFFFFF;
    }
    const auto channel = [&](int shift) {
        return ((((source >> shift) & 0xFF) * come + ((target >> shift) & 0xFF) * stay + whole / 2) / whole) << shift;
    };
    return ((whole + 127) / 255) << 24 | channel(16) | channel(8) | channel(0);
}

bool IsEmpty(const RECT& rect) {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

RECT CommonPart(const RECT& first, const RECT& second) {
    return {std::max(first.left, second.left), std::max(first.top, second.top), std::min(first.right, second.right),
            std::min(first.bottom, second.bottom)};
}

}   // namespace

bool GraphicsObject::IsSmooth() const {
    return state.smoothing == Gdiplus::SmoothingModeAntiAlias || state.smoothing == Gdiplus::SmoothingModeHighQuality;
}

cairo_matrix_t GraphicsObject::ToTarget(bool withOffset) const {
    cairo_matrix_t matrix = state.world;
    const POINT origin = target_->Origin();
    // A pixel's centre has whole coordinates, unless the host moves it.
    const bool isMoved =
        state.offset == Gdiplus::PixelOffsetModeHalf || state.offset == Gdiplus::PixelOffsetModeHighQuality;
    const double half = withOffset && !isMoved ? 0.5 : 0;
    matrix.x0 += origin.x + half;
    matrix.y0 += origin.y + half;
    return matrix;
}

Gdiplus::Status GraphicsObject::Prepare(Raster* raster) const {
    SIZE size{};
    if (target_->IsBusy()) {
        return Gdiplus::ObjectBusy;
    }
    if (!target_->Size(&size)) {
        return Gdiplus::Win32Error;
    }
    raster->limit = {0, 0, size.cx, size.cy};
    if (state.isLimited) {
        raster->limit = CommonPart(raster->limit, state.clip);
    }
    raster->matrix = ToTarget(true);
    raster->isSmooth = IsSmooth();
    return Gdiplus::Ok;
}

Gdiplus::Status GraphicsObject::Save(UINT* number) {
    saved_.push_back(state);
    *number = static_cast<UINT>(saved_.size());
    return Gdiplus::Ok;
}

Gdiplus::Status GraphicsObject::Restore(UINT number) {
    if (number == 0 || number > saved_.size()) {
        return Gdiplus::Ok;   // one that has been restored already
    }
    state = saved_[number - 1];
    saved_.resize(number - 1);
    return Gdiplus::Ok;
}

Gdiplus::Status GraphicsObject::SetClip(const Outline& outline, Gdiplus::FillMode fill, Gdiplus::CombineMode mode) {
    SIZE size{};
    if (!target_->Size(&size)) {
        return Gdiplus::Win32Error;
    }
    const RECT whole{0, 0, size.cx, size.cy};
    const RECT old = state.isLimited ? CommonPart(whole, state.clip) : whole;
    Spot topLeft, bottomRight;
    const bool isBox = outline.IsRectangle(ToTarget(true), &topLeft, &bottomRight);
    if (isBox && (mode == Gdiplus::CombineModeReplace || mode == Gdiplus::CombineModeIntersect)) {
        const auto edge = [](double value) { return static_cast<LONG>(std::ceil(value - 0.5)); };
        const RECT box{edge(topLeft.x), edge(topLeft.y), edge(bottomRight.x), edge(bottomRight.y)};
        if (mode == Gdiplus::CombineModeReplace) {
            state.clipPixels.reset();
            state.clip = CommonPart(whole, box);
        } else {
            state.clip = CommonPart(old, box);
        }
        state.isLimited = true;
        return Gdiplus::Ok;
    }
    Raster raster;
    raster.matrix = ToTarget(true);
    raster.limit = whole;
    CoverageMask shape = FillMask(raster, outline, fill);
    const auto width = static_cast<std::size_t>(size.cx);
    auto pixels = std::make_shared<std::vector<unsigned char>>(width * static_cast<std::size_t>(size.cy));
    for (LONG y = 0; y < size.cy; ++y) {
        for (LONG x = 0; x < size.cx; ++x) {
            const std::size_t index = static_cast<std::size_t>(y) * width + static_cast<std::size_t>(x);
            const bool was = x >= old.left && x < old.right && y >= old.top && y < old.bottom &&
                             (!state.clipPixels || index >= state.clipPixels->size() || (*state.clipPixels)[index]);
            const bool is = !shape.IsEmpty() && x >= shape.area.left && x < shape.area.right && y >= shape.area.top &&
                            y < shape.area.bottom && shape.Row(y)[x - shape.area.left] >= 128;
            bool both = is;
            switch (mode) {
                case Gdiplus::CombineModeReplace:
                    break;
                case Gdiplus::CombineModeIntersect:
                    both = was && is;
                    break;
                case Gdiplus::CombineModeUnion:
                    both = was || is;
                    break;
                case Gdiplus::CombineModeXor:
                    both = was != is;
                    break;
                case Gdiplus::CombineModeExclude:
                    both = was && !is;
                    break;
                case Gdiplus::CombineModeComplement:
                    both = is && !was;
                    break;
                default:
                    return Gdiplus::InvalidParameter;
            }
            (*pixels)[index] = both ? 255 : 0;
        }
    }
    state.clipPixels = std::move(pixels);
    state.clip = whole;
    state.isLimited = true;
    return Gdiplus::Ok;
}

Gdiplus::Status GraphicsObject::Compose(CoverageMask mask, PaintSource& source, Gdiplus::CompositingMode mode) {
    SIZE size{};
    if (mask.IsEmpty() || IsEmpty(mask.area) || !target_->Size(&size)) {
        return Gdiplus::Ok;
    }
    if (state.clipPixels) {
        for (int y = mask.area.top; y < mask.area.bottom; ++y) {
            const std::size_t first = static_cast<std::size_t>(y) * static_cast<std::size_t>(size.cx) +
                                      static_cast<std::size_t>(mask.area.left);
            unsigned char* const row = mask.Row(y);
            for (int i = 0; i < mask.area.right - mask.area.left; ++i) {
                const std::size_t index = first + static_cast<std::size_t>(i);
                if (index >= state.clipPixels->size() || (*state.clipPixels)[index] == 0) {
                    row[i] = 0;
                }
            }
        }
    }
    const auto coverage = [&](int x, int y) { return mask.Row(y) + (x - mask.area.left); };
    std::vector<DWORD> colors(static_cast<std::size_t>(mask.area.right - mask.area.left));
    const bool isDone = target_->Modify(mask.area, coverage, [&](int x, int y, int count, DWORD* argb) {
        source.Row(x, y, count, colors.data());
        const unsigned char* const row = coverage(x, y);
        for (int i = 0; i < count; ++i) {
            const DWORD color = colors[static_cast<std::size_t>(i)];
            argb[i] = mode == Gdiplus::CompositingModeSourceCopy ? Instead(argb[i], color, row[i])
                                                                 : Over(argb[i], color, row[i]);
        }
    });
    return isDone ? Gdiplus::Ok : Gdiplus::Win32Error;
}

Gdiplus::Status GraphicsObject::Clear(DWORD color) {
    Raster raster;
    const Gdiplus::Status status = Prepare(&raster);
    if (status != Gdiplus::Ok || IsEmpty(raster.limit)) {
        return status;
    }
    CoverageMask mask;
    mask.area = raster.limit;
    mask.stride = raster.limit.right - raster.limit.left;
    mask.bytes.assign(
        static_cast<std::size_t>(mask.stride) * static_cast<std::size_t>(raster.limit.bottom - raster.limit.top), 255);
    const auto source = SourceOf(SolidBrushObject(color), raster.matrix);
    return Compose(std::move(mask), *source, Gdiplus::CompositingModeSourceCopy);
}

Gdiplus::Status GraphicsObject::Fill(const Outline& outline, Gdiplus::FillMode mode, const BrushObject& brush) {
    Raster raster;
    const Gdiplus::Status status = Prepare(&raster);
    if (status != Gdiplus::Ok) {
        return status;
    }
    const auto source = SourceOf(brush, raster.matrix);
    return source ? Compose(FillMask(raster, outline, mode), *source, state.compositing) : Gdiplus::Ok;
}

Gdiplus::Status GraphicsObject::Stroke(const Outline& outline, const PenObject& pen) {
    Raster raster;
    const Gdiplus::Status status = Prepare(&raster);
    if (status != Gdiplus::Ok) {
        return status;
    }
    const auto source = SourceOf(*pen.brush, raster.matrix);
    return source ? Compose(StrokeMask(raster, outline, pen), *source, state.compositing) : Gdiplus::Ok;
}

Gdiplus::Status GraphicsObject::DrawPicture(Picture& picture, const Gdiplus::RectF& target,
                                            const Gdiplus::RectF& source) {
    Raster raster;
    const Gdiplus::Status status = Prepare(&raster);
    if (status != Gdiplus::Ok) {
        return status;
    }
    if (picture.IsLocked()) {
        return Gdiplus::ObjectBusy;
    }
    // Pictures lie on whole pixels, so that one that isn't scaled comes through as it is.
    raster.matrix = ToTarget(false);
    raster.isSmooth = false;
    const auto paint = SourceOf(picture, source, target, raster.matrix, state.interpolation);
    if (!paint) {
        return Gdiplus::Ok;
    }
    // What the source rectangle has beyond the picture covers nothing.
    const auto part = [](float from, float length, int limit, float start, float extent, double* low, double* high) {
        const double first = std::clamp<double>(from, 0, limit),
                     last = std::clamp(double{from} + length, 0.0, 1.0 * limit);
        *low = start + (first - from) / length * extent;
        *high = start + (last - from) / length * extent;
    };
    double left, top, right, bottom;
    part(source.X, source.Width, picture.Width(), target.X, target.Width, &left, &right);
    part(source.Y, source.Height, picture.Height(), target.Y, target.Height, &top, &bottom);
    Outline outline;
    outline.AddRectangle({left, top}, right - left, bottom - top);
    return Compose(FillMask(raster, outline, Gdiplus::FillModeWinding), *paint, state.compositing);
}

Gdiplus::Status GraphicsObject::DrawCovered(const BrushObject& brush, bool isSmooth,
                                            const std::function<void(cairo_t*, const cairo_matrix_t&)>& draw) {
    Raster raster;
    const Gdiplus::Status status = Prepare(&raster);
    if (status != Gdiplus::Ok) {
        return status;
    }
    raster.isSmooth = isSmooth;
    const auto source = SourceOf(brush, raster.matrix);
    if (!source) {
        return Gdiplus::Ok;
    }
    const cairo_matrix_t matrix = ToTarget(false);
    CoverageMask mask = DrawnMask(raster, [&](cairo_t* cairo) { draw(cairo, matrix); });
    return Compose(std::move(mask), *source, state.compositing);
}

}   // namespace rastel::platform::gdip

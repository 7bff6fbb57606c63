// What a Graphics draws on. Only pixels that are covered are stored, so that all others keep their bits.
#include <algorithm>

#include "rastel/platform/portable/gdi/device_context.h"
#include "rastel/platform/portable/gdi/pixel_convert.h"
#include "rastel/platform/portable/gdi/pixel_rows.h"
#include "rastel/platform/portable/gdiplus/canvas_graphics.h"

namespace rastel::platform::gdip {

namespace {

// Calls `run` with the first pixel and the length of each stretch of covered ones.
template <class Run>
void ForRuns(const unsigned char* coverage, int count, Run run) {
    for (int i = 0; i < count;) {
        const auto* const begin = std::find_if(coverage + i, coverage + count, [](unsigned char c) { return c != 0; });
        const auto* const end = std::find(begin, coverage + count, 0);
        if (begin != end) {
            run(static_cast<int>(begin - coverage), static_cast<int>(end - begin));
        }
        i = static_cast<int>(end - coverage);
    }
}

class PictureTarget final : public DrawTarget {
public:
    explicit PictureTarget(Picture& picture) : picture_(picture) {}

    bool Size(SIZE* size) const override {
        *size = {picture_.Width(), picture_.Height()};
        return true;
    }
    bool IsBusy() const override { return picture_.IsLocked(); }

    bool Modify(const RECT& area, const Touched& isTouched, const Change& change) override {
        std::vector<DWORD> argb(static_cast<std::size_t>(area.right - area.left));
        for (int y = area.top; y < area.bottom; ++y) {
            ForRuns(isTouched(area.left, y), area.right - area.left, [&](int first, int count) {
                const int x = area.left + first;
                picture_.Load(x, y, count, argb.data());
                change(x, y, count, argb.data());
                picture_.Store(x, y, count, argb.data());
            });
        }
        return true;
    }

private:
    Picture& picture_;
};

class ContextTarget final : public DrawTarget {
public:
    explicit ContextTarget(std::shared_ptr<DeviceContext> context)
        : context_(std::move(context)), origin_(context_->state.origin) {}

    bool Size(SIZE* size) const override { return TargetSize(*context_, size); }
    POINT Origin() const override { return origin_; }

    bool Modify(const RECT& area, const Touched& isTouched, const Change& change) override {
        return DrawInside(*context_, area, Access::ReadWrite, [&](const Canvas& canvas, const RECT& part) {
            PixelBuffer wide;
            wide.format = FormatOfDepth(32);
            PixelConverter widen(canvas.pixels, wide, {}), narrow(wide, canvas.pixels, {});
            const int bitsPerPixel = canvas.pixels.format.bitsPerPixel;
            std::vector<DWORD> argb(static_cast<std::size_t>(part.right - part.left));
            for (int y = part.top; y < part.bottom; ++y) {
                unsigned char* const row = canvas.pixels.Row(y - canvas.origin.y);
                ForRuns(isTouched(part.left, y), part.right - part.left, [&](int first, int count) {
                    const int x = part.left + first;
                    LoadRow(row, bitsPerPixel, x - canvas.origin.x, count, argb.data());
                    widen.Map(argb.data(), argb.data(), count);
                    for (int i = 0; i < count; ++i) {
                        argb[static_cast<std::size_t>(i)] |= 0xFF000000;
                    }
                    change(x, y, count, argb.data());
                    for (int i = 0; i < count; ++i) {
                        argb[static_cast<std::size_t>(i)] &= 0x00FFFFFF;
                    }
                    narrow.Map(argb.data(), argb.data(), count);
                    StoreRow(row, bitsPerPixel, x - canvas.origin.x, count, argb.data());
                });
            }
        });
    }

private:
    std::shared_ptr<DeviceContext> context_;   // one that is deleted meanwhile lives on until this ends
    POINT origin_;
};

}   // namespace

std::unique_ptr<DrawTarget> TargetOf(HDC context) {
    auto found = FindContext(context);
    return found ? std::make_unique<ContextTarget>(std::move(found)) : nullptr;
}

std::unique_ptr<DrawTarget> TargetOf(Picture& picture) {
    return std::make_unique<PictureTarget>(picture);
}

}   // namespace rastel::platform::gdip

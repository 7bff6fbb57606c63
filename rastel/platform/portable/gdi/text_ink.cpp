#include "rastel/platform/portable/gdi/text_ink.h"

#include <algorithm>
#include <utility>

namespace rastel::platform {

namespace {

// What shows of an image or of a bar; both lie inside the range of an int.
RECT VisiblePart(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom, const RECT& visible) {
    return RECT{static_cast<LONG>(std::clamp<std::int64_t>(left, visible.left, visible.right)),
                static_cast<LONG>(std::clamp<std::int64_t>(top, visible.top, visible.bottom)),
                static_cast<LONG>(std::clamp<std::int64_t>(right, visible.left, visible.right)),
                static_cast<LONG>(std::clamp<std::int64_t>(bottom, visible.top, visible.bottom))};
}

RECT VisiblePart(const PlacedImage& placed, const RECT& visible) {
    const std::int64_t right = static_cast<std::int64_t>(placed.x) + placed.image->width;
    const std::int64_t bottom = static_cast<std::int64_t>(placed.y) + placed.image->height;
    return VisiblePart(placed.x, placed.y, right, bottom, visible);
}

RECT VisiblePart(const TextBar& bar, const RECT& visible) {
    return bar.turned.image ? VisiblePart(bar.turned, visible)
                            : VisiblePart(bar.rect.left, bar.rect.top, bar.rect.right, bar.rect.bottom, visible);
}

bool IsEmpty(const RECT& rect) {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

class Merger {
public:
    explicit Merger(const RECT& area) : area_(area) {
        image_.width = area.right - area.left;
        image_.height = area.bottom - area.top;
        image_.coverage.resize(static_cast<std::size_t>(image_.width) * static_cast<std::size_t>(image_.height));
    }

    void Add(const PlacedImage& placed) {
        const RECT part = VisiblePart(placed, area_);
        for (LONG y = part.top; y < part.bottom && !IsEmpty(part); y++) {
            const auto row = static_cast<std::size_t>(static_cast<std::int64_t>(y) - placed.y);
            const auto column = static_cast<std::size_t>(static_cast<std::int64_t>(part.left) - placed.x);
            const unsigned char* source =
                placed.image->coverage.data() + row * static_cast<std::size_t>(placed.image->width) + column;
            unsigned char* target = At(part.left, y);
            for (LONG x = part.left; x < part.right; x++, source++, target++) {
                const int free = (255 - *source) * (255 - *target);
                *target = static_cast<unsigned char>(255 - (free + 127) / 255);
            }
        }
    }

    void Add(const TextBar& bar) {
        if (bar.turned.image) {
            Add(bar.turned);
            return;
        }
        const RECT part = VisiblePart(bar, area_);
        for (LONG y = part.top; y < part.bottom && !IsEmpty(part); y++) {
            std::fill_n(At(part.left, y), part.right - part.left, static_cast<unsigned char>(255));
        }
    }

    PlacedImage Take() {
        return PlacedImage{area_.left, area_.top, std::make_shared<const GlyphImage>(std::move(image_))};
    }

private:
    unsigned char* At(LONG x, LONG y) {
        return image_.coverage.data() +
               static_cast<std::size_t>(y - area_.top) * static_cast<std::size_t>(image_.width) +
               static_cast<std::size_t>(x - area_.left);
    }

    RECT area_;
    GlyphImage image_;
};

}   // namespace

PlacedImage MergeInk(const TextLine& line, const RECT& visible) {
    RECT area = {};
    const auto include = [&](const auto& piece) {
        const RECT part = VisiblePart(piece, visible);
        if (IsEmpty(part)) {
            return;
        }
        area = IsEmpty(area) ? part
                             : RECT{std::min(area.left, part.left), std::min(area.top, part.top),
                                    std::max(area.right, part.right), std::max(area.bottom, part.bottom)};
    };
    std::ranges::for_each(line.glyphs, include);
    std::ranges::for_each(line.bars, include);
    if (IsEmpty(area)) {
        return {};
    }
    Merger merger(area);
    const auto add = [&](const auto& piece) { merger.Add(piece); };
    std::ranges::for_each(line.glyphs, add);
    std::ranges::for_each(line.bars, add);
    return merger.Take();
}

}   // namespace rastel::platform

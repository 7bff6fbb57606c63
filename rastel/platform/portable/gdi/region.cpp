#include "rastel/platform/portable/gdi/region.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "rastel/platform/portable/gdi.h"

namespace rastel::platform {

namespace {

bool IsEmptyRect(const RECT& rect) {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

struct Span {
    LONG left;
    LONG right;
    bool operator==(const Span&) const = default;
};

enum class Operation { Intersect, Subtract, Unite };

bool Inside(Operation operation, bool first, bool second) {
    switch (operation) {
        case Operation::Intersect:
            return first && second;
        case Operation::Subtract:
            return first && !second;
        case Operation::Unite:
            return first || second;
    }
    return false;
}

// Both lists are sorted and disjoint; touching spans of the result are joined.
void CombineSpans(Operation operation, const std::vector<Span>& first, const std::vector<Span>& second,
                  std::vector<Span>* result) {
    result->clear();
    std::size_t edge1 = 0;   // edges passed: left and right of each span in turn
    std::size_t edge2 = 0;
    const auto edgeOf = [](const std::vector<Span>& spans, std::size_t edge) {
        return edge % 2 == 0 ? spans[edge / 2].left : spans[edge / 2].right;
    };
    bool inside = false;
    while (edge1 < 2 * first.size() || edge2 < 2 * second.size()) {
        LONG x;
        if (edge2 >= 2 * second.size()) {
            x = edgeOf(first, edge1);
        } else if (edge1 >= 2 * first.size()) {
            x = edgeOf(second, edge2);
        } else {
            x = std::min(edgeOf(first, edge1), edgeOf(second, edge2));
        }
        while (edge1 < 2 * first.size() && edgeOf(first, edge1) == x) {
            ++edge1;
        }
        while (edge2 < 2 * second.size() && edgeOf(second, edge2) == x) {
            ++edge2;
        }
        const bool nowInside = Inside(operation, edge1 % 2 != 0, edge2 % 2 != 0);
        if (nowInside && !inside) {
            result->push_back({x, x});
        } else if (!nowInside && inside) {
            result->back().right = x;
        }
        inside = nowInside;
    }
}

// Hands out the spans of one band after another; bands must be asked for from the top down.
class BandReader {
public:
    explicit BandReader(const std::vector<RECT>& rects) : rects_(rects) {}

    const std::vector<Span>& At(LONG top) {
        while (next_ < rects_.size() && rects_[next_].bottom <= top) {
            ++next_;
        }
        spans_.clear();
        for (std::size_t i = next_; i < rects_.size() && rects_[i].top <= top; ++i) {
            spans_.push_back({rects_[i].left, rects_[i].right});
        }
        return spans_;
    }

private:
    const std::vector<RECT>& rects_;
    std::size_t next_ = 0;
    std::vector<Span> spans_;
};

std::vector<RECT> Combine(Operation operation, const std::vector<RECT>& first, const std::vector<RECT>& second) {
    std::vector<LONG> edges;
    edges.reserve(2 * (first.size() + second.size()));
    for (const std::vector<RECT>* rects : {&first, &second}) {
        for (const RECT& rect : *rects) {
            edges.push_back(rect.top);
            edges.push_back(rect.bottom);
        }
    }
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());

    std::vector<RECT> result;
    std::vector<Span> spans;
    std::vector<Span> previous;
    std::size_t previousStart = 0;
    BandReader bands1(first);
    BandReader bands2(second);
    for (std::size_t i = 0; i + 1 < edges.size(); ++i) {
        CombineSpans(operation, bands1.At(edges[i]), bands2.At(edges[i]), &spans);
        const bool touches = !previous.empty() && result.back().bottom == edges[i];
        if (touches && spans == previous) {
            for (std::size_t k = previousStart; k < result.size(); ++k) {
                result[k].bottom = edges[i + 1];
            }
            continue;
        }
        previousStart = result.size();
        for (const Span& span : spans) {
            result.push_back({span.left, edges[i], span.right, edges[i + 1]});
        }
        previous = spans;
    }
    return result;
}

LONG Moved(LONG value, int by) {
    return static_cast<LONG>(std::clamp<std::int64_t>(std::int64_t{value} + by, INT32_MIN, INT32_MAX));
}

}   // namespace

Region::Region(const RECT& rect) {
    if (!IsEmptyRect(rect)) {
        rects_.push_back(rect);
    }
}

RECT Region::Bounds() const {
    if (rects_.empty()) {
        return {};
    }
    RECT bounds = rects_.front();
    bounds.bottom = rects_.back().bottom;
    for (const RECT& rect : rects_) {
        bounds.left = std::min(bounds.left, rect.left);
        bounds.right = std::max(bounds.right, rect.right);
    }
    return bounds;
}

int Region::Complexity() const {
    return rects_.empty() ? NULLREGION : rects_.size() == 1 ? SIMPLEREGION : COMPLEXREGION;
}

void Region::Intersect(const RECT& rect) {
    if (rects_.size() == 1) {
        RECT& only = rects_.front();
        only = {std::max(only.left, rect.left), std::max(only.top, rect.top), std::min(only.right, rect.right),
                std::min(only.bottom, rect.bottom)};
        if (IsEmptyRect(only)) {
            rects_.clear();
        }
        return;
    }
    Intersect(Region(rect));
}

void Region::Intersect(const Region& other) {
    rects_ = Combine(Operation::Intersect, rects_, other.rects_);
}

void Region::Subtract(const RECT& rect) {
    Subtract(Region(rect));
}

void Region::Subtract(const Region& other) {
    if (!other.IsEmpty()) {
        rects_ = Combine(Operation::Subtract, rects_, other.rects_);
    }
}

void Region::Unite(const RECT& rect) {
    Unite(Region(rect));
}

void Region::Unite(const Region& other) {
    rects_ = Combine(Operation::Unite, rects_, other.rects_);
}

void Region::Offset(int dx, int dy) {
    bool clamped = false;
    for (RECT& rect : rects_) {
        const RECT moved = {Moved(rect.left, dx), Moved(rect.top, dy), Moved(rect.right, dx), Moved(rect.bottom, dy)};
        clamped = clamped || std::int64_t{moved.right} - moved.left != std::int64_t{rect.right} - rect.left ||
                  std::int64_t{moved.bottom} - moved.top != std::int64_t{rect.bottom} - rect.top;
        rect = moved;
    }
    if (clamped) {
        std::erase_if(rects_, IsEmptyRect);
        rects_ = Combine(Operation::Unite, rects_, {});
    }
}

bool Region::Contains(const RECT& rect) const {
    if (IsEmptyRect(rect)) {
        return true;
    }
    Region rest(rect);
    rest.Subtract(*this);
    return rest.IsEmpty();
}

bool Region::operator==(const Region& other) const {
    return std::equal(rects_.begin(), rects_.end(), other.rects_.begin(), other.rects_.end(),
                      [](const RECT& a, const RECT& b) {
                          return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
                      });
}

}   // namespace rastel::platform

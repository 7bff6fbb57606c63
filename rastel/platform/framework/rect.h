// Sizes, points and rectangles with their arithmetic, as values over the system's plain structures.
//
// Left and top lie inside a rectangle, right and bottom outside; it is empty when left >= right or top >= bottom.
// Sums that leave 32 bits wrap round, so that a wild rectangle gives a wrong number and nothing worse.
#pragma once

#include <algorithm>

#include "rastel/platform/types.h"

namespace rastel::platform {

constexpr LONG WrappedSum(LONG a, LONG b) {
    return static_cast<LONG>(static_cast<ULONG>(a) + static_cast<ULONG>(b));
}

constexpr LONG WrappedDifference(LONG a, LONG b) {
    return static_cast<LONG>(static_cast<ULONG>(a) - static_cast<ULONG>(b));
}

constexpr LONG Middle(LONG a, LONG b) {
    return static_cast<LONG>((static_cast<LONGLONG>(a) + b) / 2);
}

}   // namespace rastel::platform

class CSize : public SIZE {
public:
    CSize() : SIZE{0, 0} {}
    CSize(int width, int height) : SIZE{width, height} {}
    CSize(const SIZE& size) : SIZE(size) {}
    explicit CSize(const POINT& point) : SIZE{point.x, point.y} {}

    CSize& operator+=(const SIZE& size) { return *this = *this + size; }
    CSize& operator-=(const SIZE& size) { return *this = *this - size; }
    CSize operator-() const { return CSize() - *this; }

    friend CSize operator+(const CSize& a, const SIZE& b) {
        return {rastel::platform::WrappedSum(a.cx, b.cx), rastel::platform::WrappedSum(a.cy, b.cy)};
    }
    friend CSize operator-(const CSize& a, const SIZE& b) {
        return {rastel::platform::WrappedDifference(a.cx, b.cx), rastel::platform::WrappedDifference(a.cy, b.cy)};
    }
    friend bool operator==(const CSize& a, const CSize& b) { return a.cx == b.cx && a.cy == b.cy; }
};

class CPoint : public POINT {
public:
    CPoint() : POINT{0, 0} {}
    CPoint(int atX, int atY) : POINT{atX, atY} {}
    CPoint(const POINT& point) : POINT(point) {}
    explicit CPoint(const SIZE& size) : POINT{size.cx, size.cy} {}

    void Offset(int dx, int dy) { *this += CSize(dx, dy); }
    void Offset(const POINT& by) { *this += by; }
    void Offset(const SIZE& by) { *this += by; }
    void SetPoint(int atX, int atY) { *this = CPoint(atX, atY); }

    CPoint& operator+=(const SIZE& by) { return *this = *this + by; }
    CPoint& operator+=(const POINT& by) { return *this = *this + by; }
    CPoint& operator-=(const SIZE& by) { return *this = *this - by; }
    CPoint& operator-=(const POINT& by) { return *this = *this - CSize(by); }
    CPoint operator-() const { return CPoint() - CSize(*this); }

    friend CPoint operator+(const CPoint& a, const SIZE& b) {
        return {rastel::platform::WrappedSum(a.x, b.cx), rastel::platform::WrappedSum(a.y, b.cy)};
    }
    friend CPoint operator+(const CPoint& a, const POINT& b) { return a + CSize(b); }
    friend CPoint operator-(const CPoint& a, const SIZE& b) {
        return {rastel::platform::WrappedDifference(a.x, b.cx), rastel::platform::WrappedDifference(a.y, b.cy)};
    }
    // The way from b to a.
    friend CSize operator-(const CPoint& a, const POINT& b) { return CSize(a - CSize(b)); }
    friend bool operator==(const CPoint& a, const CPoint& b) { return a.x == b.x && a.y == b.y; }
};

class CRect : public RECT {
public:
    CRect() : RECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
    CRect(const RECT& rect) : RECT(rect) {}
    CRect(const RECT* rect) : RECT(rect ? *rect : RECT{0, 0, 0, 0}) {}
    CRect(const POINT& topLeft, const POINT& bottomRight) : RECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y} {}
    CRect(const POINT& topLeft, const SIZE& size) : CRect(topLeft, CPoint(topLeft) + size) {}

    int Width() const { return rastel::platform::WrappedDifference(right, left); }
    int Height() const { return rastel::platform::WrappedDifference(bottom, top); }
    CSize Size() const { return {Width(), Height()}; }
    CPoint TopLeft() const { return {left, top}; }
    CPoint BottomRight() const { return {right, bottom}; }
    CPoint CenterPoint() const {
        return {rastel::platform::Middle(left, right), rastel::platform::Middle(top, bottom)};
    }
    BOOL IsRectEmpty() const { return left >= right || top >= bottom; }
    BOOL IsRectNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
    BOOL PtInRect(const POINT& point) const {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }
    BOOL EqualRect(const RECT* other) const { return other && *this == *other; }

    void SetRect(int l, int t, int r, int b) { *this = CRect(l, t, r, b); }
    void SetRect(const POINT& topLeft, const POINT& bottomRight) { *this = CRect(topLeft, bottomRight); }
    void SetRectEmpty() { *this = CRect(); }
    void CopyRect(const RECT* source) { *this = CRect(source); }

    void InflateRect(int dx, int dy) { InflateRect(dx, dy, dx, dy); }
    void InflateRect(const SIZE& by) { InflateRect(by.cx, by.cy); }
    void InflateRect(const RECT* by) {
        const CRect edges(by);
        InflateRect(edges.left, edges.top, edges.right, edges.bottom);
    }
    void InflateRect(int l, int t, int r, int b) {
        left = rastel::platform::WrappedDifference(left, l);
        top = rastel::platform::WrappedDifference(top, t);
        right = rastel::platform::WrappedSum(right, r);
        bottom = rastel::platform::WrappedSum(bottom, b);
    }
    void DeflateRect(int dx, int dy) { DeflateRect(dx, dy, dx, dy); }
    void DeflateRect(const SIZE& by) { DeflateRect(by.cx, by.cy); }
    void DeflateRect(const RECT* by) {
        const CRect edges(by);
        DeflateRect(edges.left, edges.top, edges.right, edges.bottom);
    }
    void DeflateRect(int l, int t, int r, int b) {
        left = rastel::platform::WrappedSum(left, l);
        top = rastel::platform::WrappedSum(top, t);
        right = rastel::platform::WrappedDifference(right, r);
        bottom = rastel::platform::WrappedDifference(bottom, b);
    }

    void OffsetRect(int dx, int dy) { *this = CRect(TopLeft() + CSize(dx, dy), BottomRight() + CSize(dx, dy)); }
    void OffsetRect(const POINT& by) { OffsetRect(by.x, by.y); }
    void OffsetRect(const SIZE& by) { OffsetRect(by.cx, by.cy); }
    void MoveToX(int x) { *this = CRect(CPoint(x, top), Size()); }
    void MoveToY(int y) { *this = CRect(CPoint(left, y), Size()); }
    void MoveToXY(int x, int y) { *this = CRect(CPoint(x, y), Size()); }
    void MoveToXY(const POINT& to) { *this = CRect(to, Size()); }

    // Exchanges edges that stand the wrong way round.
    void NormalizeRect() {
        *this = CRect(std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom));
    }

    // The common part of two rectangles; all zero, and FALSE, where there is none. Either may be this one.
    BOOL IntersectRect(const RECT* first, const RECT* second) {
        const CRect a(first), b(second);
        const CRect common(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                           std::min(a.bottom, b.bottom));
        const bool isCommon = !a.IsRectEmpty() && !b.IsRectEmpty() && !common.IsRectEmpty();
        *this = isCommon ? common : CRect();
        return isCommon;
    }

    // The smallest rectangle round both. An empty one counts for nothing; all zero, and FALSE, for two of them.
    BOOL UnionRect(const RECT* first, const RECT* second) {
        const CRect a(first), b(second);
        if (a.IsRectEmpty() || b.IsRectEmpty()) {
            const CRect& other = a.IsRectEmpty() ? b : a;
            *this = other.IsRectEmpty() ? CRect() : other;
        } else {
            *this = CRect(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                          std::max(a.bottom, b.bottom));
        }
        return !IsRectEmpty();
    }

    // The first without the second, where that is a rectangle; else the first as it is. FALSE when nothing stays.
    BOOL SubtractRect(const RECT* first, const RECT* second) {
        CRect rest(first), common;
        if (rest.IsRectEmpty()) {
            rest.SetRectEmpty();
        } else if (common.IntersectRect(&rest, second)) {
            if (common.EqualRect(&rest)) {
                rest.SetRectEmpty();
            } else if (common.top == rest.top && common.bottom == rest.bottom) {
                if (common.left == rest.left) {
                    rest.left = common.right;
                } else if (common.right == rest.right) {
                    rest.right = common.left;
                }
            } else if (common.left == rest.left && common.right == rest.right) {
                if (common.top == rest.top) {
                    rest.top = common.bottom;
                } else if (common.bottom == rest.bottom) {
                    rest.bottom = common.top;
                }
            }
        }
        *this = rest;
        return !IsRectEmpty();
    }

    operator LPRECT() { return this; }
    operator const RECT*() const { return this; }

    // A point or size moves the rectangle, a rectangle grows (+) or shrinks (-) it edge by edge.
    CRect& operator+=(const POINT& by) { return *this = *this + by; }
    CRect& operator+=(const SIZE& by) { return *this = *this + by; }
    CRect& operator+=(const RECT* by) { return *this = *this + by; }
    CRect& operator-=(const POINT& by) { return *this = *this - by; }
    CRect& operator-=(const SIZE& by) { return *this = *this - by; }
    CRect& operator-=(const RECT* by) { return *this = *this - by; }
    CRect& operator&=(const RECT& other) { return *this = *this & other; }
    CRect& operator|=(const RECT& other) { return *this = *this | other; }

    CRect operator+(const POINT& by) const { return {TopLeft() + by, BottomRight() + by}; }
    CRect operator+(const SIZE& by) const { return {TopLeft() + by, BottomRight() + by}; }
    CRect operator+(const RECT* by) const {
        CRect grown(*this);
        grown.InflateRect(by);
        return grown;
    }
    CRect operator-(const POINT& by) const { return *this - CSize(by); }
    CRect operator-(const SIZE& by) const { return {TopLeft() - by, BottomRight() - by}; }
    CRect operator-(const RECT* by) const {
        CRect shrunk(*this);
        shrunk.DeflateRect(by);
        return shrunk;
    }
    CRect operator&(const RECT& other) const {
        CRect common;
        common.IntersectRect(this, &other);
        return common;
    }
    CRect operator|(const RECT& other) const {
        CRect both;
        both.UnionRect(this, &other);
        return both;
    }

    friend bool operator==(const CRect& a, const CRect& b) {
        return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
    }
    friend bool operator==(const CRect& a, const RECT& b) { return a == CRect(b); }
};

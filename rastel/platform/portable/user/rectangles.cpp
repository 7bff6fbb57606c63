#include <algorithm>

#include "rastel/platform/portable/user.h"

namespace {

// Co-ordinates wrap as they do on Windows, which signed arithmetic may not.
LONG Sum(LONG value, int by) {
    return static_cast<LONG>(static_cast<DWORD>(value) + static_cast<DWORD>(by));
}

}   // namespace

BOOL IsRectEmpty(const RECT* rect) {
    return rect == nullptr || rect->left >= rect->right || rect->top >= rect->bottom;
}

BOOL SetRect(LPRECT rect, int left, int top, int right, int bottom) {
    if (rect == nullptr) {
        return FALSE;
    }
    *rect = {left, top, right, bottom};
    return TRUE;
}

BOOL SetRectEmpty(LPRECT rect) {
    return SetRect(rect, 0, 0, 0, 0);
}

BOOL CopyRect(LPRECT target, const RECT* source) {
    if (target == nullptr || source == nullptr) {
        return FALSE;
    }
    *target = *source;
    return TRUE;
}

BOOL EqualRect(const RECT* first, const RECT* second) {
    return first != nullptr && second != nullptr && first->left == second->left && first->top == second->top &&
           first->right == second->right && first->bottom == second->bottom;
}

BOOL PtInRect(const RECT* rect, POINT point) {
    return rect != nullptr && point.x >= rect->left && point.x < rect->right && point.y >= rect->top &&
           point.y < rect->bottom;
}

BOOL OffsetRect(LPRECT rect, int dx, int dy) {
    if (rect == nullptr) {
        return FALSE;
    }
    *rect = {Sum(rect->left, dx), Sum(rect->top, dy), Sum(rect->right, dx), Sum(rect->bottom, dy)};
    return TRUE;
}

BOOL InflateRect(LPRECT rect, int dx, int dy) {
    if (rect == nullptr) {
        return FALSE;
    }
    const auto less = [](LONG value, int by) {
        return static_cast<LONG>(static_cast<DWORD>(value) - static_cast<DWORD>(by));
    };
    *rect = {less(rect->left, dx), less(rect->top, dy), Sum(rect->right, dx), Sum(rect->bottom, dy)};
    return TRUE;
}

BOOL IntersectRect(LPRECT result, const RECT* first, const RECT* second) {
    if (result == nullptr || first == nullptr || second == nullptr) {
        return FALSE;
    }
    // An empty rectangle has no points to share, though its edges may lie inside the other one.
    const RECT common = {std::max(first->left, second->left), std::max(first->top, second->top),
                         std::min(first->right, second->right), std::min(first->bottom, second->bottom)};
    if (IsRectEmpty(first) || IsRectEmpty(second) || IsRectEmpty(&common)) {
        SetRectEmpty(result);
        return FALSE;
    }
    *result = common;
    return TRUE;
}

BOOL UnionRect(LPRECT result, const RECT* first, const RECT* second) {
    if (result == nullptr || first == nullptr || second == nullptr) {
        return FALSE;
    }
    if (IsRectEmpty(first)) {
        if (IsRectEmpty(second)) {
            SetRectEmpty(result);
            return FALSE;
        }
        return CopyRect(result, second);
    }
    if (IsRectEmpty(second)) {
        return CopyRect(result, first);
    }
    *result = {std::min(first->left, second->left), std::min(first->top, second->top),
               std::max(first->right, second->right), std::max(first->bottom, second->bottom)};
    return TRUE;
}

BOOL SubtractRect(LPRECT result, const RECT* first, const RECT* second) {
    if (result == nullptr || first == nullptr || second == nullptr) {
        return FALSE;
    }
    RECT rest = *first;
    if (IsRectEmpty(&rest)) {
        SetRectEmpty(result);
        return FALSE;
    }
    RECT common;
    if (IntersectRect(&common, first, second)) {
        if (EqualRect(&common, first)) {
            SetRectEmpty(result);
            return FALSE;
        }
        // Only a strip along a whole edge leaves a rectangle; anything else leaves the first one as it was.
        if (common.top == rest.top && common.bottom == rest.bottom) {
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
    *result = rest;
    return TRUE;
}

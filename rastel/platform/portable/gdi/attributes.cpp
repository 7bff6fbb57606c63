// The plain settings of a context.
#include "rastel/platform/portable/gdi/device_context.h"

using rastel::platform::ContextState;
using rastel::platform::FindContext;

namespace {

// Puts a new value in and hands back the old one, or `failure` for a handle that is none.
template <typename Value>
Value Exchange(HDC context, Value ContextState::*member, Value value, Value failure) {
    const auto found = FindContext(context);
    if (!found) {
        return failure;
    }
    const Value previous = found->state.*member;
    found->state.*member = value;
    return previous;
}

template <typename Value>
Value Read(HDC context, Value ContextState::*member, Value failure) {
    const auto found = FindContext(context);
    return found ? found->state.*member : failure;
}

}   // namespace

int SetROP2(HDC context, int operation) {
    if (operation < R2_BLACK || operation > R2_WHITE) {
        return 0;
    }
    return Exchange(context, &ContextState::rop2, operation, 0);
}

int GetROP2(HDC context) {
    return Read(context, &ContextState::rop2, 0);
}

int SetBkMode(HDC context, int mode) {
    if (mode != TRANSPARENT && mode != OPAQUE) {
        return 0;
    }
    return Exchange(context, &ContextState::backMode, mode, 0);
}

int GetBkMode(HDC context) {
    return Read(context, &ContextState::backMode, 0);
}

COLORREF SetBkColor(HDC context, COLORREF color) {
    return Exchange<COLORREF>(context, &ContextState::backColor, color, CLR_INVALID);
}

COLORREF GetBkColor(HDC context) {
    return Read<COLORREF>(context, &ContextState::backColor, CLR_INVALID);
}

COLORREF SetTextColor(HDC context, COLORREF color) {
    return Exchange<COLORREF>(context, &ContextState::textColor, color, CLR_INVALID);
}

COLORREF GetTextColor(HDC context) {
    return Read<COLORREF>(context, &ContextState::textColor, CLR_INVALID);
}

int SetStretchBltMode(HDC context, int mode) {
    if (mode < BLACKONWHITE || mode > HALFTONE) {
        return 0;
    }
    return Exchange(context, &ContextState::stretchMode, mode, 0);
}

int GetStretchBltMode(HDC context) {
    return Read(context, &ContextState::stretchMode, 0);
}

BOOL MoveToEx(HDC context, int x, int y, LPPOINT previous) {
    const auto found = FindContext(context);
    if (!found) {
        return FALSE;
    }
    if (previous != nullptr) {
        *previous = found->state.position;
    }
    found->state.position = {x, y};
    return TRUE;
}

BOOL GetCurrentPositionEx(HDC context, LPPOINT position) {
    const auto found = FindContext(context);
    if (!found || position == nullptr) {
        return FALSE;
    }
    *position = found->state.position;
    return TRUE;
}

// Where the lines of a text go; the characters are left to CTextRender::Draw.
#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <limits>

#include "rastel/platform/kernel.h"
#include "rastel/platform/user.h"
#include "rastel/text/text_render.h"

namespace {

constexpr wchar_t lineEnd = L'\r';
constexpr wchar_t lineFeed = L'\n';

int ToInt(std::int64_t value) {
    return static_cast<int>(
        std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

// From the first to the second, whatever rectangle a host made up.
std::int64_t Span(LONG first, LONG second) {
    return static_cast<std::int64_t>(second) - first;
}

std::int64_t TopOf(const CRect& rc, std::int64_t total, UINT format) {
    if (format & DT_BOTTOM) {
        return rc.bottom - total;
    }
    return format & DT_VCENTER ? (Span(rc.top, rc.bottom) - total) / 2 + rc.top : rc.top;
}

std::int64_t LeftOf(const CRect& rc, UINT format, HDC hDC, const wchar_t* line, int length) {
    std::int64_t x = rc.left;
    if (format & (DT_CENTER | DT_RIGHT)) {
        SIZE size = {};
        ::GetTextExtentPoint32W(hDC, line, length, &size);
        const std::int64_t room = Span(rc.left, rc.right) - size.cx;
        x += format & DT_CENTER ? room / 2 : 0;
        x += format & DT_RIGHT ? room : 0;
    }
    return x;
}

}   // namespace

void CTextRender::DrawTextW(CAdvSurface& target, const wchar_t* text, const CRect& rc, UINT format) {
    if (!text) {
        return;
    }
    Initilize(text);
    const std::int64_t lines = 1 + std::count(text, text + ::lstrlenW(text), lineEnd);
    TEXTMETRICW metrics = {};
    ::GetTextMetricsW(m_hDC, &metrics);
    std::int64_t baseline = TopOf(rc, metrics.tmHeight * lines, format) + metrics.tmAscent;
    for (std::int64_t i = 0; i < lines; ++i) {
        const wchar_t* const end = std::wcschr(text, lineEnd);
        const int length = end ? ToInt(end - text) : ::lstrlenW(text);
        if (length == 0) {
            break;
        }
        Draw(target, ToInt(LeftOf(rc, format, m_hDC, text, length)), ToInt(baseline), text, length);
        baseline += metrics.tmHeight;
        if (!end) {
            break;
        }
        text = end + 1;
        while (*text == lineFeed) {
            ++text;
        }
    }
}

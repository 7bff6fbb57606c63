#include <algorithm>
#include <limits>

#include "rastel/platform/framework/characters.h"
#include "rastel/platform/portable/kernel.h"

int lstrlenW(LPCWSTR text) {
    constexpr std::size_t most = std::numeric_limits<int>::max();
    return text ? static_cast<int>(std::min(std::wcslen(text), most)) : 0;
}

LONGLONG _wtoi64(const wchar_t* text) {
    if (!text) {
        return 0;
    }
    while (rastel::platform::IsSpaceUnit(*text)) {
        ++text;
    }
    const bool isNegative = *text == L'-';
    if (*text == L'-' || *text == L'+') {
        ++text;
    }
    constexpr ULONGLONG mostPositive = std::numeric_limits<LONGLONG>::max();
    const ULONGLONG most = mostPositive + (isNegative ? 1 : 0);
    ULONGLONG number = 0;
    for (; *text >= L'0' && *text <= L'9'; ++text) {
        const ULONGLONG digit = static_cast<ULONGLONG>(*text - L'0');
        number = number > (most - digit) / 10 ? most : number * 10 + digit;
    }
    return static_cast<LONGLONG>(isNegative ? 0 - number : number);
}

wchar_t* _i64tow(LONGLONG value, wchar_t* buffer, int radix) {
    if (!buffer) {
        return nullptr;
    }
    wchar_t* end = buffer;
    if (radix >= 2 && radix <= 36) {
        const bool hasSign = radix == 10 && value < 0;
        ULONGLONG rest = static_cast<ULONGLONG>(value);
        rest = hasSign ? 0 - rest : rest;
        do {
            *end++ = L"0123456789abcdefghijklmnopqrstuvwxyz"[rest % static_cast<ULONGLONG>(radix)];
            rest /= static_cast<ULONGLONG>(radix);
        } while (rest != 0);
        if (hasSign) {
            *end++ = L'-';
        }
        std::reverse(buffer, end);
    }
    *end = L'\0';
    return buffer;
}

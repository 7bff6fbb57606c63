#include "rastel/platform/portable/gdi/text_decode.h"

#include <type_traits>

namespace rastel::platform {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsLeading(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsTrailing(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

char32_t Unit(wchar_t unit) {
    return static_cast<char32_t>(static_cast<std::make_unsigned_t<wchar_t>>(unit));
}

void AppendUtf8(char32_t c, std::string& target) {
    const auto tail = [&](int shift) { target.push_back(static_cast<char>(0x80 | ((c >> shift) & 0x3F))); };
    if (c < 0x80) {
        target.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        target.push_back(static_cast<char>(0xC0 | (c >> 6)));
        tail(0);
    } else if (c < 0x10000) {
        target.push_back(static_cast<char>(0xE0 | (c >> 12)));
        tail(6);
        tail(0);
    } else {
        target.push_back(static_cast<char>(0xF0 | (c >> 18)));
        tail(12);
        tail(6);
        tail(0);
    }
}

}   // namespace

char32_t ValidCharacter(char32_t character) {
    return IsLeading(character) || IsTrailing(character) || character > 0x10FFFF ? kReplacement : character;
}

int DecodeCharacter(LPCWSTR text, int length, char32_t* character) {
    const char32_t c = Unit(text[0]);
    if (IsLeading(c) && length > 1 && IsTrailing(Unit(text[1]))) {
        *character = 0x10000 + ((c - 0xD800) << 10) + (Unit(text[1]) - 0xDC00);
        return 2;
    }
    *character = ValidCharacter(c);
    return 1;
}

std::u32string DecodeText(LPCWSTR text, int length) {
    std::u32string characters;
    if (!text) {
        return characters;
    }
    for (int i = 0; i < length && text[i];) {
        char32_t c;
        i += DecodeCharacter(text + i, length - i, &c);
        characters.push_back(c);
    }
    return characters;
}

std::string ToUtf8(LPCWSTR text, int length) {
    std::string bytes;
    for (const char32_t c : DecodeText(text, length)) {
        AppendUtf8(c, bytes);
    }
    return bytes;
}

}   // namespace rastel::platform

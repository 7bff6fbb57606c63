#include "rastel/platform/portable/registry/names.h"

#include <algorithm>
#include <cstdint>

#include "rastel/platform/framework/characters.h"

namespace rastel::platform::registry {
namespace {

constexpr std::string_view valueSuffix = ".value";
constexpr std::string_view namelessValue = "@";   // a key's own value has no name
constexpr char cutMark = '~';
constexpr std::size_t longestPlain = 200, keptOfLong = 150, hashDigits = 32;

bool IsPlain(char32_t code) {
    return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9') ||
           code == ' ' || code == '-' || code == '_' || code == '(' || code == ')';
}

int HexValue(char digit) {
    return digit >= '0' && digit <= '9' ? digit - '0' : digit >= 'A' && digit <= 'F' ? digit - 'A' + 10 : -1;
}

void AppendHex(std::string& text, std::uint64_t number, std::size_t digits) {
    for (std::size_t i = digits; i-- > 0;) {
        text += "0123456789ABCDEF"[(number >> (4 * i)) & 15];
    }
}

std::uint64_t Hash(std::string_view text, std::uint64_t seed) {
    std::uint64_t hash = seed;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
        hash ^= hash >> 29;
    }
    return hash;
}

std::string Fitted(std::string escaped) {
    if (escaped.size() <= longestPlain) {
        return escaped;
    }
    std::string fitted = escaped.substr(0, keptOfLong) + cutMark;
    AppendHex(fitted, Hash(escaped, 0xCBF29CE484222325), hashDigits / 2);
    AppendHex(fitted, Hash(escaped, 0x9E3779B97F4A7C15), hashDigits / 2);
    return fitted;
}

bool IsFitted(std::string_view text) {
    if (text.size() == keptOfLong + 1 + hashDigits && text[keptOfLong] == cutMark) {
        const std::string_view digits = text.substr(keptOfLong + 1);
        return std::all_of(digits.begin(), digits.end(), [](char digit) { return HexValue(digit) >= 0; });
    }
    const auto name = text.size() <= longestPlain ? Unescaped(text) : std::nullopt;
    return name && !name->empty() && Escaped(Folded(*name)) == text;
}

}   // namespace

std::wstring Folded(std::wstring_view name) {
    std::wstring folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), LowerUnit);
    return folded;
}

std::optional<std::string> Escaped(std::wstring_view name) {
    std::string escaped, bytes;
    for (const wchar_t unit : name) {
        const auto code = static_cast<char32_t>(unit);
        if (code > 0x10FFFF) {
            return std::nullopt;
        }
        if (IsPlain(code)) {
            escaped += static_cast<char>(code);
            continue;
        }
        bytes.clear();
        AppendUtf8(bytes, code);
        for (const char byte : bytes) {
            escaped += '%';
            AppendHex(escaped, static_cast<unsigned char>(byte), 2);
        }
    }
    return escaped;
}

std::optional<std::wstring> Unescaped(std::string_view escaped) {
    std::string bytes;
    for (std::size_t i = 0; i < escaped.size(); ++i) {
        if (IsPlain(static_cast<unsigned char>(escaped[i]))) {
            bytes += escaped[i];
            continue;
        }
        const bool isEscape = escaped[i] == '%' && escaped.size() - i > 2;
        const int high = isEscape ? HexValue(escaped[i + 1]) : -1, low = isEscape ? HexValue(escaped[i + 2]) : -1;
        if (high < 0 || low < 0) {
            return std::nullopt;
        }
        bytes += static_cast<char>(static_cast<unsigned char>(high * 16 + low));
        i += 2;
    }
    std::wstring name;
    for (std::string_view rest = bytes; !rest.empty();) {
        char32_t code = 0;
        if (!TakeUtf8(rest, code) || code == 0) {
            return std::nullopt;
        }
        AppendWide(name, code);
    }
    return name;
}

std::optional<std::string> KeyFolder(std::wstring_view name) {
    auto escaped = name.empty() || name.size() > mostKeyNameUnits ? std::nullopt : Escaped(Folded(name));
    return escaped ? std::optional(Fitted(std::move(*escaped))) : std::nullopt;
}

std::optional<std::string> ValueFile(std::wstring_view name) {
    auto escaped = name.size() > mostValueNameUnits ? std::nullopt : Escaped(Folded(name));
    if (!escaped) {
        return std::nullopt;
    }
    return (escaped->empty() ? std::string(namelessValue) : Fitted(std::move(*escaped))) + std::string(valueSuffix);
}

bool LooksLikeKeyFolder(std::string_view entry) {
    return IsFitted(entry);
}

bool LooksLikeValueFile(std::string_view entry) {
    if (!entry.ends_with(valueSuffix)) {
        return false;
    }
    entry.remove_suffix(valueSuffix.size());
    return entry == namelessValue || IsFitted(entry);
}

std::optional<std::wstring> NameOfKeyFolder(std::string_view folder) {
    return folder.find(cutMark) == std::string_view::npos ? Unescaped(folder) : std::nullopt;
}

}   // namespace rastel::platform::registry

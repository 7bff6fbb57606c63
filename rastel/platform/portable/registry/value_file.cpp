#include "rastel/platform/portable/registry/value_file.h"

#include <array>
#include <charconv>
#include <cstring>
#include <utility>

#include "rastel/platform/framework/characters.h"
#include "rastel/platform/portable/registry/names.h"

namespace rastel::platform::registry {
namespace {

constexpr std::string_view firstLine = "rastel-value 1\n";
constexpr std::string_view hexDigits = "0123456789ABCDEF";

constexpr std::array<std::uint32_t, 256> crcTable = [] {
    std::array<std::uint32_t, 256> table = {};
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        std::uint32_t crc = i;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1) ? (crc >> 1) ^ 0xEDB88320 : crc >> 1;
        }
        table[i] = crc;
    }
    return table;
}();

std::uint32_t Crc(std::string_view text, std::uint32_t crc = 0) {
    crc = ~crc;
    for (const char c : text) {
        crc = (crc >> 8) ^ crcTable[(crc ^ static_cast<unsigned char>(c)) & 0xFF];
    }
    return ~crc;
}

// A type whose data is text: plain, with variables, or several in a row.
bool IsTextType(DWORD type) {
    return type == 1 || type == 2 || type == 7;
}

// Nothing where the data is not whole units or no well-formed text; such data is kept as bytes.
std::optional<std::string> Utf8Of(const std::vector<BYTE>& data) {
    std::string text;
    for (std::size_t i = 0; i + sizeof(wchar_t) <= data.size(); i += sizeof(wchar_t)) {
        wchar_t unit = 0;
        std::memcpy(&unit, &data[i], sizeof(unit));
        const auto code = static_cast<char32_t>(unit);
        if (code > 0x10FFFF || IsSurrogate(code)) {
            return std::nullopt;
        }
        AppendUtf8(text, code);
    }
    return data.size() % sizeof(wchar_t) == 0 ? std::optional(text) : std::nullopt;
}

bool AppendUnitsOf(std::string_view text, std::vector<BYTE>& data) {
    std::wstring units;
    while (!text.empty()) {
        char32_t code = 0;
        if (!TakeUtf8(text, code) || IsSurrogate(code)) {
            return false;
        }
        AppendWide(units, code);
    }
    const auto* const bytes = reinterpret_cast<const BYTE*>(units.data());
    data.assign(bytes, bytes + units.size() * sizeof(wchar_t));
    return true;
}

bool AppendBytesOf(std::string_view hex, std::vector<BYTE>& data) {
    if (hex.size() % 2 != 0) {
        return false;
    }
    data.reserve(hex.size() / 2);
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        const std::size_t high = hexDigits.find(hex[i]), low = hexDigits.find(hex[i + 1]);
        if (high == std::string_view::npos || low == std::string_view::npos) {
            return false;
        }
        data.push_back(static_cast<BYTE>(high * 16 + low));
    }
    return true;
}

std::pair<std::string_view, std::string> FormAndBody(const Value& value) {
    auto text = IsTextType(value.type) ? Utf8Of(value.data) : std::nullopt;
    if (text && text->ends_with('\0')) {
        text->pop_back();
        return {"text", std::move(*text)};
    }
    if (text) {
        return {"open", std::move(*text)};
    }
    std::string hex;
    hex.reserve(2 * value.data.size());
    for (const BYTE byte : value.data) {
        hex += hexDigits[byte >> 4];
        hex += hexDigits[byte & 15];
    }
    return {"hex", std::move(hex)};
}

std::string CheckLine(std::string_view header, std::string_view body) {
    std::string line = "check ";
    const std::uint32_t crc = Crc(body, Crc(header));
    for (int shift = 28; shift >= 0; shift -= 4) {
        line += hexDigits[(crc >> shift) & 15];
    }
    return line + "\n\n";
}

// Takes "word rest" and its line feed from the front.
std::optional<std::string_view> TakeLine(std::string_view& contents, std::string_view word) {
    const std::size_t end = contents.find('\n');
    std::string_view line = contents.substr(0, end);
    if (end == std::string_view::npos || !line.starts_with(word) || line.substr(word.size(), 1) != " ") {
        return std::nullopt;
    }
    contents.remove_prefix(end + 1);
    return line.substr(word.size() + 1);
}

template <typename Number>
bool ParseNumber(std::string_view text, Number& number) {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return !text.empty() && result.ec == std::errc() && result.ptr == text.data() + text.size();
}

}   // namespace

std::optional<std::string> FileContents(const Value& value) {
    const auto name = Escaped(value.name);
    if (!name || value.name.size() > mostValueNameUnits || value.data.size() > mostDataBytes) {
        return std::nullopt;
    }
    const auto [form, body] = FormAndBody(value);
    std::string contents(firstLine);
    contents += "name " + *name + "\ntype " + std::to_string(value.type) + "\nform " + std::string(form) + "\nbytes " +
                std::to_string(body.size()) + '\n';
    contents += CheckLine(contents, body);
    return contents + body + '\n';
}

std::optional<Value> ParseFile(std::string_view contents) {
    const std::string_view whole = contents;
    if (whole.size() > mostFileBytes || !contents.starts_with(firstLine)) {
        return std::nullopt;
    }
    contents.remove_prefix(firstLine.size());
    const auto name = TakeLine(contents, "name"), type = TakeLine(contents, "type");
    const auto form = TakeLine(contents, "form"), bytes = TakeLine(contents, "bytes");
    Value value;
    std::size_t bodyBytes = 0;
    if (!name || !type || !form || !bytes || !ParseNumber(*type, value.type) || !ParseNumber(*bytes, bodyBytes)) {
        return std::nullopt;
    }
    const std::string_view header = whole.substr(0, whole.size() - contents.size());
    constexpr std::size_t checkBytes = 16;   // "check ", eight digits, two line feeds
    if (contents.size() <= checkBytes || contents.size() - checkBytes - 1 != bodyBytes || contents.back() != '\n') {
        return std::nullopt;
    }
    const std::string_view body = contents.substr(checkBytes, bodyBytes);
    if (contents.substr(0, checkBytes) != CheckLine(header, body)) {
        return std::nullopt;
    }
    auto plainName = Unescaped(*name);
    if (!plainName || plainName->size() > mostValueNameUnits) {
        return std::nullopt;
    }
    value.name = std::move(*plainName);
    const bool isText = *form == "text" || *form == "open";
    if (isText ? !AppendUnitsOf(body, value.data) : *form != "hex" || !AppendBytesOf(body, value.data)) {
        return std::nullopt;
    }
    if (*form == "text") {
        value.data.insert(value.data.end(), sizeof(wchar_t), 0);
    }
    // Another spelling of the same value, its check worked out anew, was written by somebody else.
    return FileContents(value) == whole ? std::optional(std::move(value)) : std::nullopt;
}

}   // namespace rastel::platform::registry

// The contents of a value's file: a short header, then the data.
//
//     rastel-value 1
//     name Fill%2FColor
//     type 1
//     form text
//     bytes 5
//     check 1A2B3C4D
//     <empty line>
//     12345
//
// "text" is UTF-8 and lacks the closing null that the value ends with; "open" lacks none; "hex" is any other data.
// "bytes" counts what follows the empty line, but for the closing line feed, and "check" is a CRC-32 over all but its
// own line. A file that differs from this in one byte is no value.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "rastel/platform/portable/types.h"

namespace rastel::platform::registry {

inline constexpr std::size_t mostDataBytes = std::size_t{1} << 20;
inline constexpr std::size_t mostFileBytes = std::size_t{4} << 20;   // hex data and the longest name fit

struct Value {
    std::wstring name;
    DWORD type = 0;
    std::vector<BYTE> data;   // units of wchar_t for text
};

// Nothing for a value that cannot be stored: too much data, or a name that is no text.
std::optional<std::string> FileContents(const Value& value);

// Nothing for anything that FileContents did not write.
std::optional<Value> ParseFile(std::string_view contents);

}   // namespace rastel::platform::registry

// From the units of a wide string to characters, whatever the width of wchar_t.
#pragma once

#include <string>

#include "rastel/platform/portable/types.h"

namespace rastel::platform {

// Surrogate pairs are joined, in 16-bit and in 32-bit units; half a pair and a unit past the last character become
// U+FFFD. Ends at `length` units or before the first null unit, so that a length beyond the end of a terminated
// string reads nothing behind it. Null text or a negative length: empty.
std::u32string DecodeText(LPCWSTR text, int length);

std::string ToUtf8(LPCWSTR text, int length);

}   // namespace rastel::platform

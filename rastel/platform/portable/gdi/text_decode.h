// From the units of a wide string to characters, whatever the width of wchar_t.
#pragma once

#include <string>

#include "rastel/platform/portable/types.h"

namespace rastel::platform {

// Surrogate pairs are joined, in 16-bit and in 32-bit units; half a pair and a unit past the last character become
// U+FFFD. Ends at `length` units or before the first null unit, so that a length beyond the end of a terminated
// string reads nothing behind it. Null text or a negative length: empty.
std::u32string DecodeText(LPCWSTR text, int length);

// U+FFFD for halves of surrogate pairs and for what lies past the last character.
char32_t ValidCharacter(char32_t character);

// The first character of a text of `length` units, at least one; returns how many units it takes.
int DecodeCharacter(LPCWSTR text, int length, char32_t* character);

std::string ToUtf8(LPCWSTR text, int length);

}   // namespace rastel::platform

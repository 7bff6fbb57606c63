// The font of the project, under the name kTestFont, on whatever system the tests run.
#pragma once

namespace rastel::test {

inline constexpr const wchar_t* kTestFont = L"Rastel Test Sans";

bool AddTestFont();

}   // namespace rastel::test

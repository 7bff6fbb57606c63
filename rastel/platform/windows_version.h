// Which Windows this is, where the library must tell: it never asks for the version itself.
#pragma once

namespace rastel::platform {

bool IsWindows9x();
bool IsWindowsNt60();   // exactly 6.0

}   // namespace rastel::platform

// The display of an X server, reached through a connection of our own.
#pragma once

#include <memory>
#include <string>

#include "rastel/platform/portable/screen/display_device.h"

namespace rastel::platform {

// `name` as in $DISPLAY; null: the one that $DISPLAY names. Null result: `declined` says why.
std::shared_ptr<DisplayDevice> ConnectX11Display(const char* name, std::wstring* declined);

}   // namespace rastel::platform

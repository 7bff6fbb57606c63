#include "rastel/platform/portable/screen/x11_display.h"

namespace rastel::platform {

std::shared_ptr<DisplayDevice> ConnectX11Display(const char*, std::wstring* declined) {
    *declined = L"built without X11";
    return nullptr;
}

}   // namespace rastel::platform

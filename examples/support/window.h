// A plain window on the desktop, the least that a host brings along: Rastel draws in it by its handle.
#pragma once

#include <memory>
#include <string>

#include "rastel/platform/types.h"

namespace rastel::example {

class Window {
public:
    virtual ~Window() = default;

    virtual HWND Handle() const = 0;
    virtual SIZE ClientSize() = 0;                         // pixels
    virtual void SetTitle(const std::string& title) = 0;   // UTF-8
    // Handles what the user does during that time. False: the window was closed.
    virtual bool Wait(int milliseconds) = 0;
};

// The client area has that size, or the desktop's where that is smaller. Null: `error` says why.
std::unique_ptr<Window> OpenWindow(const std::string& title, SIZE clientSize, std::string& error);

}   // namespace rastel::example

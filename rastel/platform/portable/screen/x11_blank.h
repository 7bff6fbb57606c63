// The vertical blank of an X server, told by its Present extension. On a connection of its own, so that whoever waits
// holds up no drawing.
#pragma once

#include <xcb/present.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

#include "rastel/platform/portable/screen/x11_connection.h"

namespace rastel::platform {

class X11Blank {
public:
    explicit X11Blank(std::string displayName) : displayName_(std::move(displayName)) {}   // empty: the usual one
    ~X11Blank();
    X11Blank(const X11Blank&) = delete;
    X11Blank& operator=(const X11Blank&) = delete;

    // Returns at the start of the next blank. False, at once and ever after: the server tells of none.
    bool Wait();

private:
    bool Open();
    bool HasCome();   // the blank that was asked for last
    bool WaitForIt();

    std::string displayName_;
    std::mutex mutex_;
    std::unique_ptr<X11Connection> connection_;
    xcb_special_event_t* events_ = nullptr;
    std::uint32_t serial_ = 0;
    bool isHopeless_ = false;
};

}   // namespace rastel::platform

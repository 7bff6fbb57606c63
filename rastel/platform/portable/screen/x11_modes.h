// Sizes, rates and names of an X server's screens, through RandR. A server without it has one mode and no name.
#pragma once

#include <xcb/randr.h>
#include <xcb/xcb.h>

#include <optional>
#include <string>
#include <vector>

#include "rastel/platform/portable/screen/display_device.h"
#include "rastel/platform/portable/screen/x11_connection.h"

namespace rastel::platform {

class X11Modes {
public:
    explicit X11Modes(X11Connection& connection);

    int FirstEvent() const { return firstEvent_; }   // 0: none
    void Forget() { isKnown_ = false; }              // after such an event

    std::wstring Name();
    int RefreshHz();
    std::vector<DisplayMode> List(int bitsPerPixel);
    bool Set(int width, int height, int refreshHz);
    bool Restore();
    bool IsChanged() const { return before_.has_value(); }

private:
    struct Mode {
        xcb_randr_mode_t id;
        int width;
        int height;
        int refreshHz;
    };
    struct Setting {
        xcb_randr_crtc_t crtc = 0;
        xcb_randr_mode_t mode = 0;
        POINT place{};
        std::uint16_t rotation = 0;
        std::vector<xcb_randr_output_t> outputs;
        SIZE screen{};
        SIZE millimetres{};
    };
    void Learn();
    bool Apply(const Setting& setting, SIZE extent);
    bool Resize(SIZE size, SIZE millimetres);
    SIZE ExtentWith(xcb_randr_crtc_t changed, const RECT& place);

    X11Connection& connection_;
    xcb_connection_t* const xcb_;
    bool hasRandr_ = false;
    int firstEvent_ = 0;

    bool isKnown_ = false;   // what follows is what the server has now
    std::wstring name_;
    xcb_randr_crtc_t crtc_ = 0;
    std::vector<xcb_randr_crtc_t> allCrtcs_;
    xcb_timestamp_t configTime_ = 0;
    std::vector<Mode> modes_;
    int refreshHz_ = 0;
    Setting now_;

    std::optional<Setting> before_;   // what Restore brings back
};

}   // namespace rastel::platform

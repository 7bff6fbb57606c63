// Where the windows of an X server are and what of them can be seen. Any window of any client will do.
//
// What was found stays known until the server tells of a change: drawing a frame asks nothing.
#pragma once

#include <xcb/xcb.h>

#include <map>
#include <optional>
#include <set>
#include <vector>

#include "rastel/platform/portable/gdi/region.h"
#include "rastel/platform/portable/screen/x11_connection.h"

namespace rastel::platform {

struct X11WindowFacts {
    xcb_window_t window = 0;
    RECT client{};   // on the screen, without the border
    SIZE screen{};   // of the whole screen, at the same moment
    POINT place{};   // of the border's corner, inside the parent
    int border = 0;
    int depth = 0;
    xcb_visualid_t visual = 0;
    xcb_colormap_t colormap = 0;
    bool isViewable = false;   // it and all it lies in are mapped
    bool hasPixels = false;
};

class X11Windows {
public:
    explicit X11Windows(X11Connection& connection);

    // Nothing: no such window.
    std::optional<X11WindowFacts> Find(xcb_window_t window);

    // What other windows leave of the part that is on the screen. Under a compositing manager each window on the
    // screen has its own pixels and hides nothing of another one. Nothing: no such window.
    std::optional<Region> VisibleArea(xcb_window_t window);

    // After an event. With other parents even where to look for changes is open again.
    void Forget(bool andParents);

private:
    struct Known {
        X11WindowFacts facts;
        bool isWhole = false;   // nothing covers it and it is all on the screen
    };
    void Watch(xcb_window_t window);
    std::optional<Region> AskVisibleArea(xcb_window_t window);
    struct Question {
        xcb_get_geometry_cookie_t geometry;
        xcb_translate_coordinates_cookie_t origin;
        xcb_get_window_attributes_cookie_t attributes;
        xcb_get_geometry_cookie_t screen;
    };
    struct Cover {
        xcb_window_t window;
        POINT origin;   // of its parent, on the screen
    };
    Question Ask(xcb_window_t window);
    std::optional<X11WindowFacts> Answer(xcb_window_t window, const Question& question);
    void SubtractCovers(const std::vector<Cover>& covers, Region* visible);

    X11Connection& connection_;
    xcb_connection_t* const xcb_;
    xcb_atom_t compositor_;
    std::map<xcb_window_t, Known> known_;
    std::set<xcb_window_t> watched_;
};

}   // namespace rastel::platform

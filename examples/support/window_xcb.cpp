// The window as a client of the X server, over a connection of its own: the handle is the window's id.
#include <poll.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <iterator>

#include "examples/support/window.h"

namespace rastel::example {

namespace {

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, FreeMemory>;

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

xcb_atom_t Atom(xcb_connection_t* connection, const std::string& name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

class XcbWindow : public Window {
public:
    XcbWindow(Connection connection, const xcb_screen_t& screen, SIZE size)
        : connection_(std::move(connection)), size_(size), id_(xcb_generate_id(connection_.get())) {
        xcb_connection_t* const server = connection_.get();
        const std::uint32_t values[] = {screen.black_pixel, XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY};
        xcb_create_window(server, XCB_COPY_FROM_PARENT, id_, screen.root, 0, 0, static_cast<std::uint16_t>(size.cx),
                          static_cast<std::uint16_t>(size.cy), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
        deleteWindow_ = Atom(server, "WM_DELETE_WINDOW");
        utf8_ = Atom(server, "UTF8_STRING");
        name_ = Atom(server, "_NET_WM_NAME");
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, id_, Atom(server, "WM_PROTOCOLS"), XCB_ATOM_ATOM, 32, 1,
                            &deleteWindow_);
        SetLeastSize();
        const char className[] = "rastel\0Rastel";
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, id_, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                            sizeof(className), className);
    }

    // True once the server shows it, so that the first picture isn't lost.
    bool Show() {
        xcb_map_window(connection_.get(), id_);
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (!exposed_ && std::chrono::steady_clock::now() < limit) {
            if (!Wait(50)) {
                return false;
            }
        }
        return exposed_;
    }

    HWND Handle() const override { return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(id_)); }
    SIZE ClientSize() override { return size_; }

    void SetTitle(const std::string& title) override {
        const auto length = static_cast<std::uint32_t>(title.size());
        xcb_connection_t* const server = connection_.get();
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, id_, name_, utf8_, 8, length, title.data());
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, id_, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, length,
                            title.data());
        xcb_flush(server);
    }

    bool Wait(int milliseconds) override {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
        xcb_flush(connection_.get());
        for (;;) {
            while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
                React(*event);
            }
            if (closed_ || xcb_connection_has_error(connection_.get())) {
                return false;
            }
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(limit - std::chrono::steady_clock::now());
            if (left.count() <= 0) {
                return true;
            }
            pollfd server = {xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
            ::poll(&server, 1, static_cast<int>(left.count()));
        }
    }

private:
    void React(const xcb_generic_event_t& event) {
        switch (event.response_type & 0x7F) {
            case XCB_EXPOSE:
                exposed_ = true;
                break;
            case XCB_CONFIGURE_NOTIFY: {
                const auto& change = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
                size_ = {change.width, change.height};
                break;
            }
            case XCB_CLIENT_MESSAGE: {
                const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
                closed_ = closed_ || message.data.data32[0] == deleteWindow_;
                break;
            }
            case XCB_DESTROY_NOTIFY:
                closed_ = true;
                break;
            default:
                break;
        }
    }

    void SetLeastSize() {
        // Flags, five old fields of which two are positions, then the least width and height.
        std::array<std::uint32_t, 18> hints = {};
        constexpr std::uint32_t leastSizeIsGiven = 1 << 4;
        hints[0] = leastSizeIsGiven;
        hints[5] = 320;
        hints[6] = 240;
        xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, id_, XCB_ATOM_WM_NORMAL_HINTS,
                            XCB_ATOM_WM_SIZE_HINTS, 32, static_cast<std::uint32_t>(hints.size()), hints.data());
    }

    Connection connection_;   // closing it destroys the window
    SIZE size_;
    xcb_window_t id_;
    xcb_atom_t deleteWindow_ = 0, utf8_ = 0, name_ = 0;
    bool exposed_ = false;
    bool closed_ = false;
};

}   // namespace

std::unique_ptr<Window> OpenWindow(const std::string& title, SIZE clientSize, std::string& error) {
    int screenNumber = 0;
    Connection connection(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(connection.get())) {
        error = "the X server can't be reached";
        return nullptr;
    }
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    for (; screenNumber > 0 && screens.rem > 1; --screenNumber) {
        xcb_screen_next(&screens);
    }
    if (screens.rem < 1) {
        error = "the X server has no screen";
        return nullptr;
    }
    const SIZE size = {std::min<LONG>(clientSize.cx, screens.data->width_in_pixels),
                       std::min<LONG>(clientSize.cy, screens.data->height_in_pixels)};
    auto window = std::make_unique<XcbWindow>(std::move(connection), *screens.data, size);
    window->SetTitle(title);
    if (!window->Show()) {
        error = "the X server doesn't show the window";
        return nullptr;
    }
    return window;
}

}   // namespace rastel::example

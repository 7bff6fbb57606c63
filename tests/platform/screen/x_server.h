// An X server of the test's own, and a program that looks at it from outside.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "rastel/platform/portable/screen/x11_display.h"
#include "tests/platform/screen/access_support.h"

namespace rastel::test {

// Runs until it is destroyed or killed. Not started: such a server is not on this machine, or refuses.
class XServer {
public:
    explicit XServer(const std::string& screen, std::vector<std::string> extra = {}) {
        int ready[2];
        if (pipe(ready) != 0) {
            return;
        }
        std::vector<std::string> words = {
            "Xvfb", "-displayfd", std::to_string(ready[1]), "-screen", "0", screen, "-nolisten", "tcp", "-noreset"};
        words.insert(words.end(), extra.begin(), extra.end());
        std::vector<char*> arguments;
        for (std::string& word : words) {
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
        process_ = fork();
        if (process_ == 0) {
            close(ready[0]);
            const int nowhere = open("/dev/null", O_RDWR);
            dup2(nowhere, 1);
            dup2(nowhere, 2);
            execvp(arguments[0], arguments.data());
            _exit(127);
        }
        close(ready[1]);
        std::string number;
        char c;
        while (read(ready[0], &c, 1) == 1 && c != '\n') {
            number += c;
        }
        close(ready[0]);
        if (number.empty()) {
            Kill();
        } else {
            name_ = ":" + number;
        }
    }
    ~XServer() { Kill(); }
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    bool IsRunning() const { return !name_.empty(); }
    const char* Name() const { return name_.c_str(); }

    void Pause() const { kill(process_, SIGSTOP); }
    void Kill() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
            // One that is killed leaves its socket and its lock.
            if (!name_.empty()) {
                unlink(("/tmp/.X11-unix/X" + name_.substr(1)).c_str());
                unlink(("/tmp/.X" + name_.substr(1) + "-lock").c_str());
            }
        }
        process_ = 0;
        name_.clear();
    }

private:
    pid_t process_ = 0;
    std::string name_;
};

// Another program: it owns windows and sees what the server shows.
class XClient {
public:
    explicit XClient(const XServer& server) : xcb_(xcb_connect(server.Name(), nullptr)) {
        screen_ = xcb_setup_roots_iterator(xcb_get_setup(xcb_)).data;
    }
    ~XClient() { xcb_disconnect(xcb_); }
    XClient(const XClient&) = delete;
    XClient& operator=(const XClient&) = delete;

    xcb_connection_t* Get() const { return xcb_; }
    const xcb_screen_t& Screen() const { return *screen_; }
    void Sync() { std::free(xcb_get_input_focus_reply(xcb_, xcb_get_input_focus(xcb_), nullptr)); }

    struct Look {
        int border = 0;
        bool isMapped = true;
        bool isInputOnly = false;
        int depth = 0;   // 0: that of the parent
        xcb_window_t parent = 0;
    };
    HWND MakeWindow(const RECT& client, const Look& look) {
        const xcb_window_t window = xcb_generate_id(xcb_);
        std::uint32_t values[4] = {0, 0, 1, 0};
        std::uint32_t mask = XCB_CW_OVERRIDE_REDIRECT;
        xcb_visualid_t visual = XCB_COPY_FROM_PARENT;
        if (look.depth != 0) {
            visual = VisualOfDepth(look.depth);
            values[3] = xcb_generate_id(xcb_);
            xcb_create_colormap(xcb_, XCB_COLORMAP_ALLOC_NONE, values[3], screen_->root, visual);
            mask |= XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_COLORMAP;
        } else {
            values[0] = 1;
        }
        xcb_create_window(
            xcb_, static_cast<std::uint8_t>(look.depth), window, look.parent != 0 ? look.parent : screen_->root,
            static_cast<std::int16_t>(client.left), static_cast<std::int16_t>(client.top),
            static_cast<std::uint16_t>(client.right - client.left),
            static_cast<std::uint16_t>(client.bottom - client.top), static_cast<std::uint16_t>(look.border),
            look.isInputOnly ? XCB_WINDOW_CLASS_INPUT_ONLY : XCB_WINDOW_CLASS_INPUT_OUTPUT, visual, mask, values);
        if (look.isMapped) {
            xcb_map_window(xcb_, window);
        }
        Sync();
        return Handle(window);
    }
    HWND MakeWindow(const RECT& client) { return MakeWindow(client, Look{}); }
    void Move(HWND window, int x, int y) {
        const std::uint32_t values[] = {static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y)};
        xcb_configure_window(xcb_, Id(window), XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values);
        Sync();
    }
    void Raise(HWND window) {
        const std::uint32_t values[] = {XCB_STACK_MODE_ABOVE};
        xcb_configure_window(xcb_, Id(window), XCB_CONFIG_WINDOW_STACK_MODE, values);
        Sync();
    }
    void Destroy(HWND window) {
        xcb_destroy_window(xcb_, Id(window));
        Sync();
    }

    // What a drawable shows, as raw values. By default the whole screen, windows included.
    Picture Shown(const RECT& area, xcb_drawable_t of = 0) {
        const int width = area.right - area.left, height = area.bottom - area.top;
        xcb_get_image_reply_t* const image = xcb_get_image_reply(
            xcb_,
            xcb_get_image(xcb_, XCB_IMAGE_FORMAT_Z_PIXMAP, of != 0 ? of : screen_->root,
                          static_cast<std::int16_t>(area.left), static_cast<std::int16_t>(area.top),
                          static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height), ~0u),
            nullptr);
        Picture picture;
        if (image == nullptr) {
            return picture;
        }
        picture.width = width;
        picture.height = height;
        const int pitch = xcb_get_image_data_length(image) / height;
        const int bytes = image->depth <= 8 ? 1 : image->depth <= 16 ? 2 : 4;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                picture.pixels.push_back(RawPixel(xcb_get_image_data(image) + y * pitch + x * bytes, bytes));
            }
        }
        std::free(image);
        return picture;
    }

    static HWND Handle(xcb_window_t window) { return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(window)); }
    static xcb_window_t Id(HWND window) { return static_cast<xcb_window_t>(reinterpret_cast<std::uintptr_t>(window)); }

private:
    xcb_visualid_t VisualOfDepth(int depth) const {
        for (auto depths = xcb_screen_allowed_depths_iterator(screen_); depths.rem > 0; xcb_depth_next(&depths)) {
            if (depths.data->depth == depth && xcb_depth_visuals_length(depths.data) > 0) {
                return xcb_depth_visuals(depths.data)->visual_id;
            }
        }
        return 0;
    }

    xcb_connection_t* xcb_;
    xcb_screen_t* screen_ = nullptr;
};

inline std::shared_ptr<DisplayDevice> Connect(const XServer& server) {
    std::wstring declined;
    return rastel::platform::ConnectX11Display(server.Name(), &declined);
}

}   // namespace rastel::test

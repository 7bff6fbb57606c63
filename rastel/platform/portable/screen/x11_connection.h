// Our own connection to an X server. The host may have another one; the two share nothing.
//
// Everything that fails on the way, a lost server included, is a plain answer of "no": no error handler of anybody is
// called and no signal arrives.
#pragma once

#include <signal.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace rastel::platform {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename T>
using XReply = std::unique_ptr<T, FreeReply>;

// While one lives, writing to a server that is gone doesn't end the process.
class SigpipeGuard {
public:
    SigpipeGuard();
    ~SigpipeGuard();
    SigpipeGuard(const SigpipeGuard&) = delete;
    SigpipeGuard& operator=(const SigpipeGuard&) = delete;

private:
    sigset_t before_;
    bool wasPending_ = false;
};

class X11Connection {
public:
    // Null: `declined` says why. The caller holds a SigpipeGuard here and in all that follows, but for Drain.
    static std::unique_ptr<X11Connection> Open(const char* displayName, std::wstring* declined);
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    xcb_connection_t* Get() const { return connection_; }
    bool IsAlive() const { return xcb_connection_has_error(connection_) == 0; }
    const xcb_setup_t& Setup() const { return *xcb_get_setup(connection_); }
    const xcb_screen_t& Screen() const { return *screen_; }
    xcb_window_t Root() const { return screen_->root; }
    int ScreenNumber() const { return screenNumber_; }
    bool IsLocal() const;   // file descriptors can be passed

    xcb_atom_t Atom(const std::string& name);   // 0: none

    // What events told of since the last time.
    struct Changes {
        bool ofModes = false;       // other screens or modes
        bool ofWindows = false;     // a watched window moved, or something else about it is new
        bool ofHierarchy = false;   // and it may lie in another one, or be gone
    };

    // Takes the events and late errors off the connection.
    Changes Drain(int randrFirstEvent);

private:
    X11Connection(xcb_connection_t* connection, xcb_screen_t* screen, int screenNumber);

    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
    int screenNumber_;
};

}   // namespace rastel::platform

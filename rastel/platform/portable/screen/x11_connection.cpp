#include "rastel/platform/portable/screen/x11_connection.h"

#include <pthread.h>
#include <sys/socket.h>
#include <time.h>

namespace rastel::platform {

namespace {

bool IsPending() {
    sigset_t pending;
    return sigpending(&pending) == 0 && sigismember(&pending, SIGPIPE) == 1;
}

}   // namespace

SigpipeGuard::SigpipeGuard() {
    sigset_t block;
    sigemptyset(&block);
    sigaddset(&block, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &block, &before_);
    wasPending_ = sigismember(&before_, SIGPIPE) == 1 && IsPending();   // one that wasn't blocked has arrived
}

SigpipeGuard::~SigpipeGuard() {
    if (!wasPending_ && IsPending()) {
        // Ours: a write raises it in the thread that writes.
        sigset_t take;
        sigemptyset(&take);
        sigaddset(&take, SIGPIPE);
        const timespec atOnce = {};
        sigtimedwait(&take, nullptr, &atOnce);
    }
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

X11Connection::X11Connection(xcb_connection_t* connection, xcb_screen_t* screen, int screenNumber)
    : connection_(connection), screen_(screen), screenNumber_(screenNumber) {}

X11Connection::~X11Connection() {
    xcb_disconnect(connection_);
}

std::unique_ptr<X11Connection> X11Connection::Open(const char* displayName, std::wstring* declined) {
    if (displayName == nullptr) {
        displayName = std::getenv("DISPLAY");
    }
    if (displayName == nullptr || *displayName == '\0') {
        *declined = L"no X display named";
        return nullptr;
    }
    int screenNumber = 0;
    xcb_connection_t* const connection = xcb_connect(displayName, &screenNumber);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        *declined = L"no X server answers";
        return nullptr;
    }
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < screenNumber && screens.rem > 0; ++i) {
        xcb_screen_next(&screens);
    }
    if (screens.rem <= 0) {
        xcb_disconnect(connection);
        *declined = L"the X server has no such screen";
        return nullptr;
    }
    return std::unique_ptr<X11Connection>(new X11Connection(connection, screens.data, screenNumber));
}

bool X11Connection::IsLocal() const {
    sockaddr_storage address{};
    socklen_t bytes = sizeof(address);
    const int socket = xcb_get_file_descriptor(connection_);
    return getsockname(socket, reinterpret_cast<sockaddr*>(&address), &bytes) == 0 && address.ss_family == AF_UNIX;
}

xcb_atom_t X11Connection::Atom(const std::string& name) {
    const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{0};
}

X11Connection::Changes X11Connection::Drain(int randrFirstEvent) {
    Changes changes;
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        const int type = event->response_type & 0x7F;
        constexpr int kRandrEvents = 2;
        switch (type) {
            case XCB_DESTROY_NOTIFY:
            case XCB_REPARENT_NOTIFY:
                changes.ofHierarchy = true;
                [[fallthrough]];
            case XCB_VISIBILITY_NOTIFY:
            case XCB_CREATE_NOTIFY:
            case XCB_UNMAP_NOTIFY:
            case XCB_MAP_NOTIFY:
            case XCB_CONFIGURE_NOTIFY:
            case XCB_GRAVITY_NOTIFY:
            case XCB_CIRCULATE_NOTIFY:
            case XCB_COLORMAP_NOTIFY:
                changes.ofWindows = true;
                break;
            default:
                changes.ofModes |=
                    randrFirstEvent > 0 && type >= randrFirstEvent && type < randrFirstEvent + kRandrEvents;
        }
    }
    return changes;
}

}   // namespace rastel::platform

#include "rastel/platform/portable/screen/x11_blank.h"

#include <poll.h>

#include <chrono>

namespace rastel::platform {

X11Blank::~X11Blank() {
    const SigpipeGuard guard;
    if (events_ != nullptr) {
        xcb_unregister_for_special_event(connection_->Get(), events_);
    }
    connection_.reset();
}

bool X11Blank::Open() {
    if (events_ != nullptr) {
        return true;
    }
    std::wstring declined;
    connection_ = X11Connection::Open(displayName_.empty() ? nullptr : displayName_.c_str(), &declined);
    if (!connection_) {
        return false;
    }
    xcb_connection_t* const xcb = connection_->Get();
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(xcb, &xcb_present_id);
    if (extension == nullptr || !extension->present) {
        return false;
    }
    const std::uint32_t id = xcb_generate_id(xcb);
    xcb_special_event_t* const events = xcb_register_for_special_xge(xcb, &xcb_present_id, id, nullptr);
    const XReply<xcb_generic_error_t> error(xcb_request_check(
        xcb, xcb_present_select_input_checked(xcb, id, connection_->Root(), XCB_PRESENT_EVENT_MASK_COMPLETE_NOTIFY)));
    if (error || !connection_->IsAlive()) {
        xcb_unregister_for_special_event(xcb, events);
        return false;
    }
    events_ = events;
    return true;
}

bool X11Blank::HasCome() {
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_special_event(connection_->Get(), events_)}) {
        const auto& told = reinterpret_cast<const xcb_present_complete_notify_event_t&>(*event);
        if (told.event_type == XCB_PRESENT_COMPLETE_NOTIFY && told.serial == serial_) {
            return true;
        }
    }
    return false;
}

bool X11Blank::WaitForIt() {
    // A screen that is off may tell of no blank at all.
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(200);
    while (connection_->IsAlive()) {
        if (HasCome()) {
            return true;
        }
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        pollfd news = {xcb_get_file_descriptor(connection_->Get()), POLLIN, 0};
        if (left <= 0 || poll(&news, 1, static_cast<int>(left)) < 0) {
            return false;
        }
    }
    return false;
}

bool X11Blank::Wait() {
    const std::lock_guard lock(mutex_);
    const SigpipeGuard guard;
    if (isHopeless_ || !Open()) {
        isHopeless_ = true;
        return false;
    }
    // No blank in particular, and of each one: the next.
    xcb_present_notify_msc(connection_->Get(), connection_->Root(), ++serial_, 0, 1, 0);
    xcb_flush(connection_->Get());
    isHopeless_ = !WaitForIt();
    return !isHopeless_;
}

}   // namespace rastel::platform

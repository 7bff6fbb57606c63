// Who may touch the pixels of a surface: one blit, or whoever has them locked or a context on them.
#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

#include "rastel/platform/portable/ddraw.h"

namespace rastel::platform {

class SurfaceTurn {
public:
    enum class Use { None, Blit, Pixels };

    // A blit is soon over and may be waited for. Pixels that are out may be given back by a thread that waits for the
    // one that asks, so that is refused at once.
    HRESULT Take(Use use, bool waits) {
        std::unique_lock lock(mutex_);
        while (use_ == Use::Blit && waits && !IsMineLocked()) {
            free_.wait(lock);
        }
        if (use_ != Use::None) {
            return use_ == Use::Blit && !IsMineLocked() ? DDERR_WASSTILLDRAWING : DDERR_SURFACEBUSY;
        }
        use_ = use;
        holder_ = std::this_thread::get_id();
        return DD_OK;
    }

    bool IsMine() const {
        const std::lock_guard lock(mutex_);
        return IsMineLocked();
    }

    void Give() {
        {
            const std::lock_guard lock(mutex_);
            use_ = Use::None;
        }
        free_.notify_all();
    }

private:
    bool IsMineLocked() const { return use_ != Use::None && holder_ == std::this_thread::get_id(); }

    mutable std::mutex mutex_;
    std::condition_variable free_;
    Use use_ = Use::None;
    std::thread::id holder_;
};

}   // namespace rastel::platform

// Who may touch the pixels of a surface: one blit, or whoever has them locked or a context on them.
#pragma once

#include <atomic>
#include <thread>

#include "rastel/platform/portable/ddraw.h"

namespace rastel::platform {

// Taken and given back for every little blit, so there is no lock but the turn itself.
class SurfaceTurn {
public:
    enum class Use : int { None, Blit, Pixels };

    // A blit is soon over and may be waited for. Pixels that are out may be given back by a thread that waits for the
    // one that asks, so that is refused at once.
    HRESULT Take(Use use, bool waits) {
        Use now = Use::None;
        while (!use_.compare_exchange_strong(now, use)) {
            if (now == Use::Pixels || holder_ == std::this_thread::get_id()) {
                return DDERR_SURFACEBUSY;
            }
            if (!waits) {
                return DDERR_WASSTILLDRAWING;
            }
            use_.wait(Use::Blit);
            now = Use::None;
        }
        holder_ = std::this_thread::get_id();
        return DD_OK;
    }

    bool IsMine() const { return holder_ == std::this_thread::get_id(); }

    // By the one that has it.
    void Give() {
        holder_ = std::thread::id();   // before the turn goes: no thread ever finds itself here afterwards
        use_ = Use::None;
        use_.notify_all();
    }

private:
    std::atomic<Use> use_ = Use::None;
    std::atomic<std::thread::id> holder_ = {};   // only its own thread ever finds itself here
};

}   // namespace rastel::platform

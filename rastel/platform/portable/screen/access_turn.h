// One access to the pixels at a time: other threads wait for their turn, the same thread is refused.
#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

namespace rastel::platform {

class AccessTurn {
public:
    bool Take() {
        std::unique_lock lock(mutex_);
        const std::thread::id me = std::this_thread::get_id();
        if (holder_ == me) {
            return false;
        }
        free_.wait(lock, [this] { return holder_ == std::thread::id(); });
        holder_ = me;
        return true;
    }

    // The same without waiting. False: somebody has it.
    bool TryTake() {
        const std::lock_guard lock(mutex_);
        if (holder_ != std::thread::id()) {
            return false;
        }
        holder_ = std::this_thread::get_id();
        return true;
    }

    bool IsMine() const {
        const std::lock_guard lock(mutex_);
        return holder_ == std::this_thread::get_id();
    }

    void Give() {
        {
            const std::lock_guard lock(mutex_);
            holder_ = std::thread::id();
        }
        free_.notify_one();
    }

private:
    mutable std::mutex mutex_;
    std::condition_variable free_;
    std::thread::id holder_;
};

}   // namespace rastel::platform

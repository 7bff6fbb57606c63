// A re-entrant lock and the guard that holds it for a scope.
#pragma once

#include <atomic>
#include <mutex>
#include <system_error>
#include <thread>

#include "rastel/platform/types.h"

// May be locked again by the thread that holds it; each Lock wants its Unlock. May throw when it is made.
class CCriticalSection {
public:
    CCriticalSection() = default;
    CCriticalSection(const CCriticalSection&) = delete;
    CCriticalSection& operator=(const CCriticalSection&) = delete;

    // Waits for the lock. FALSE only when the system refuses it.
    BOOL Lock() {
        if (IsMine()) {
            ++depth_;
            return TRUE;
        }
        try {
            mutex_.lock();
        } catch (const std::system_error&) {
            return FALSE;
        }
        return Take();
    }

    // FALSE at once when another thread holds the lock.
    BOOL TryLock() {
        if (IsMine()) {
            ++depth_;
            return TRUE;
        }
        return mutex_.try_lock() ? Take() : FALSE;
    }

    // FALSE, with nothing done, on a thread that does not hold the lock.
    BOOL Unlock() {
        if (!IsMine()) {
            return FALSE;
        }
        if (--depth_ == 0) {
            owner_.store(std::thread::id(), std::memory_order_relaxed);
            mutex_.unlock();
        }
        return TRUE;
    }

private:
    bool IsMine() const { return owner_.load(std::memory_order_relaxed) == std::this_thread::get_id(); }

    BOOL Take() {
        owner_.store(std::this_thread::get_id(), std::memory_order_relaxed);
        depth_ = 1;
        return TRUE;
    }

    std::mutex mutex_;
    std::atomic<std::thread::id> owner_ = {};   // only its own thread ever finds itself here
    unsigned long long depth_ = 0;              // touched by the owner alone
};

// Holds a lock, which must outlive it, until Unlock or its own end. One guard counts once, however often it locks.
class CSingleLock {
public:
    explicit CSingleLock(CCriticalSection* section, BOOL initialLock = FALSE) : section_(section) {
        if (initialLock) {
            Lock();
        }
    }
    CSingleLock(const CSingleLock&) = delete;
    CSingleLock& operator=(const CSingleLock&) = delete;
    ~CSingleLock() { Unlock(); }

    BOOL Lock() {
        if (!isLocked_ && section_) {
            isLocked_ = section_->Lock();
        }
        return isLocked_;
    }

    // FALSE when the guard holds nothing.
    BOOL Unlock() {
        if (!isLocked_) {
            return FALSE;
        }
        isLocked_ = FALSE;
        return section_->Unlock();
    }

    BOOL IsLocked() const { return isLocked_; }

private:
    CCriticalSection* section_;
    BOOL isLocked_ = FALSE;
};

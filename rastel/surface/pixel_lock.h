// Scope guards of a store's two kinds of access, so that every way out of an operation gives them back.
#pragma once

#include "rastel/surface/surface_base.h"

namespace rastel {

class PixelLock {
public:
    explicit PixelLock(CSurfaceBase& store) : store_(store), bits_(store.LockData()) {}
    ~PixelLock() { Unlock(); }
    PixelLock(const PixelLock&) = delete;
    PixelLock& operator=(const PixelLock&) = delete;

    void Unlock() {   // ahead of the scope's end, where the order matters
        if (bits_) {
            store_.UnlockData();
            bits_ = nullptr;
        }
    }
    explicit operator bool() const { return bits_ != nullptr; }
    int Pitch() const { return store_.GetPitch(); }   // valid once locked
    unsigned char* At(int x, int y) const {
        return bits_ + static_cast<std::ptrdiff_t>(y) * store_.GetPitch() +
               static_cast<std::ptrdiff_t>(x) * store_.GetBytesPrPixel();
    }

private:
    CSurfaceBase& store_;
    unsigned char* bits_;
};

class ScopedDc {
public:
    explicit ScopedDc(CSurfaceBase& store) : store_(store), dc_(store.GetDC()) {}
    ~ScopedDc() {
        if (dc_) {
            store_.ReleaseDC(dc_);
        }
    }
    ScopedDc(const ScopedDc&) = delete;
    ScopedDc& operator=(const ScopedDc&) = delete;

    explicit operator bool() const { return dc_ != nullptr; }
    HDC Get() const { return dc_; }

private:
    CSurfaceBase& store_;
    HDC dc_;
};

}   // namespace rastel

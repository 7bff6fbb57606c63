// A block of pixels: zero when made, on a 64-byte boundary.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace rastel::platform {

class PixelMemory {
public:
    // False: no such amount of memory, or more than 31 bits can count. What was held before is gone in any case.
    bool Allocate(std::int64_t bytes) {
        block_.reset();
        data_ = nullptr;
        if (bytes <= 0 || bytes > INT32_MAX) {
            return false;
        }
        // calloc hands fresh pages of the system on as they are, and clears only what it takes from its own store.
        block_.reset(static_cast<unsigned char*>(std::calloc(1, static_cast<std::size_t>(bytes) + kAlignment)));
        if (!block_) {
            return false;
        }
        const auto address = reinterpret_cast<std::uintptr_t>(block_.get());
        data_ = block_.get() + (kAlignment - address % kAlignment) % kAlignment;
        return true;
    }

    unsigned char* Data() const { return data_; }

private:
    static constexpr std::size_t kAlignment = 64;
    struct Free {
        void operator()(unsigned char* block) const { std::free(block); }
    };
    std::unique_ptr<unsigned char, Free> block_;
    unsigned char* data_ = nullptr;
};

}   // namespace rastel::platform

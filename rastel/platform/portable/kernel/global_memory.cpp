#include "rastel/platform/portable/kernel/global_memory.h"

#include <cstdlib>
#include <memory>
#include <mutex>
#include <new>
#include <unordered_map>
#include <utility>

#include "rastel/platform/portable/kernel.h"

namespace {

struct Release {
    void operator()(void* memory) const { std::free(memory); }
};

struct Block {
    std::unique_ptr<void, Release> memory;   // null: a moveable block of no bytes
    SIZE_T bytes = 0;
    bool isMoveable = false;
    DWORD lockCount = 0;
    std::unique_ptr<char> handle;   // gives a moveable block an address of its own to be known by
};

struct Blocks {
    std::mutex mutex;
    std::unordered_map<HGLOBAL, Block> byHandle;

    Block* Find(HGLOBAL handle) {
        const auto found = byHandle.find(handle);
        if (found == byHandle.end()) {
            SetLastError(ERROR_INVALID_HANDLE);
            return nullptr;
        }
        return &found->second;
    }
};

Blocks& All() {
    // Never destroyed: a host may free a block from one of its own static objects.
    static auto* const blocks = new Blocks;
    return *blocks;
}

// More than any address space has to spare; the allocator itself is not asked about such sizes.
constexpr std::uint64_t mostBytes = std::uint64_t{1} << 39;

}   // namespace

HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes) {
    constexpr UINT knownFlags = 0x7F72;   // the obsolete ones too, which ask for nothing
    if (flags & ~knownFlags) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    Block block;
    block.bytes = bytes;
    block.isMoveable = (flags & GMEM_MOVEABLE) != 0;
    const SIZE_T room = bytes == 0 && !block.isMoveable ? 1 : bytes;   // a fixed block needs an address
    if (room > 0 && room <= mostBytes) {
        block.memory.reset((flags & GMEM_ZEROINIT) ? std::calloc(room, 1) : std::malloc(room));
    }
    if (block.isMoveable) {
        block.handle.reset(new (std::nothrow) char);
    }
    if ((room > 0 && !block.memory) || (block.isMoveable && !block.handle)) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    const HGLOBAL handle = block.isMoveable ? block.handle.get() : block.memory.get();
    const std::lock_guard lock(All().mutex);
    All().byHandle.emplace(handle, std::move(block));
    return handle;
}

LPVOID GlobalLock(HGLOBAL memory) {
    const std::lock_guard lock(All().mutex);
    Block* const block = All().Find(memory);
    if (!block || !block->memory) {
        return nullptr;
    }
    if (block->isMoveable && block->lockCount < 0xFFFFFFFF) {
        ++block->lockCount;
    }
    return block->memory.get();
}

BOOL GlobalUnlock(HGLOBAL memory) {
    const std::lock_guard lock(All().mutex);
    Block* const block = All().Find(memory);
    if (!block) {
        return FALSE;
    }
    if (!block->isMoveable) {
        return TRUE;   // never locked, as it never moves
    }
    if (block->lockCount == 0) {
        SetLastError(ERROR_NOT_LOCKED);
        return FALSE;
    }
    if (--block->lockCount == 0) {
        SetLastError(ERROR_SUCCESS);   // tells the 0 of the last unlock from the 0 of a failure
        return FALSE;
    }
    return TRUE;
}

SIZE_T GlobalSize(HGLOBAL memory) {
    const std::lock_guard lock(All().mutex);
    const Block* const block = All().Find(memory);
    return block ? block->bytes : 0;
}

HGLOBAL GlobalFree(HGLOBAL memory) {
    if (!memory) {
        return nullptr;
    }
    const std::lock_guard lock(All().mutex);
    if (!All().Find(memory)) {
        return memory;
    }
    All().byHandle.erase(memory);
    return nullptr;
}

std::size_t rastel::platform::LiveGlobalBlocks() {
    const std::lock_guard lock(All().mutex);
    return All().byHandle.size();
}

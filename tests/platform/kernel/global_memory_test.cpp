// Global memory: locks, sizes, and handles that are none.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "rastel/platform/kernel.h"
#include "rastel/platform/portable/kernel/global_memory.h"

namespace {

class GlobalMemory : public ::testing::Test {
protected:
    std::size_t before_ = rastel::platform::LiveGlobalBlocks();
    void TearDown() override { EXPECT_EQ(rastel::platform::LiveGlobalBlocks(), before_); }
};

TEST_F(GlobalMemory, AMoveableBlockCountsItsLocks) {
    const HGLOBAL block = ::GlobalAlloc(GHND, 100);
    ASSERT_NE(block, nullptr);
    auto* const bytes = static_cast<unsigned char*>(::GlobalLock(block));
    ASSERT_NE(bytes, nullptr);
    EXPECT_NE(static_cast<void*>(bytes), block);
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(bytes[i], 0);
    }
    std::memset(bytes, 7, 100);
    EXPECT_EQ(::GlobalLock(block), bytes);
    EXPECT_NE(::GlobalUnlock(block), 0);
    ::SetLastError(1);
    EXPECT_EQ(::GlobalUnlock(block), 0);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(::GlobalUnlock(block), 0);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_NOT_LOCKED});
    EXPECT_EQ(::GlobalSize(block), 100u);
    EXPECT_EQ(::GlobalFree(block), nullptr);
}

TEST_F(GlobalMemory, AFixedBlockIsItsOwnAddress) {
    const HGLOBAL block = ::GlobalAlloc(GMEM_FIXED | GMEM_ZEROINIT, 16);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(::GlobalLock(block), block);
    EXPECT_EQ(static_cast<unsigned char*>(block)[15], 0);
    EXPECT_EQ(::GlobalSize(block), 16u);
    EXPECT_EQ(::GlobalFree(block), nullptr);
}

TEST_F(GlobalMemory, EmptyBlocksAreBlocks) {
    const HGLOBAL fixed = ::GlobalAlloc(GMEM_FIXED, 0), moveable = ::GlobalAlloc(GMEM_MOVEABLE, 0);
    EXPECT_NE(::GlobalLock(fixed), nullptr);
    EXPECT_EQ(::GlobalLock(moveable), nullptr);
    for (const HGLOBAL block : {fixed, moveable}) {
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(::GlobalSize(block), 0u);
        EXPECT_EQ(::GlobalFree(block), nullptr);
    }
}

TEST_F(GlobalMemory, WhatIsNoBlockFailsEverywhere) {
    const HGLOBAL freed = ::GlobalAlloc(GMEM_MOVEABLE, 8);
    EXPECT_EQ(::GlobalFree(freed), nullptr);
    const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, 8);
    int local = 0;
    HGLOBAL inside = static_cast<unsigned char*>(::GlobalLock(block)) + 1;
    for (const HGLOBAL none : {static_cast<HGLOBAL>(&local), inside, reinterpret_cast<HGLOBAL>(std::intptr_t{-1})}) {
        EXPECT_EQ(::GlobalLock(none), nullptr);
        EXPECT_EQ(::GlobalUnlock(none), 0);
        EXPECT_EQ(::GlobalSize(none), 0u);
        ::SetLastError(0);
        EXPECT_EQ(::GlobalFree(none), none);
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_HANDLE});
    }
    EXPECT_EQ(::GlobalFree(nullptr), nullptr);
    EXPECT_EQ(::GlobalLock(nullptr), nullptr);
    EXPECT_EQ(::GlobalFree(block), nullptr);   // locked, and freed all the same
}

TEST_F(GlobalMemory, WildSizesAndFlagsAreRefused) {
    for (const SIZE_T bytes : {SIZE_MAX, SIZE_MAX / 2, SIZE_T{1} << 40}) {
        for (const UINT flags : {GMEM_FIXED, GMEM_MOVEABLE, GHND}) {
            EXPECT_EQ(::GlobalAlloc(flags, bytes), nullptr);
            EXPECT_EQ(::GetLastError(), DWORD{ERROR_NOT_ENOUGH_MEMORY});
        }
    }
    EXPECT_EQ(::GlobalAlloc(0xFFFFFFFF, 8), nullptr);
}

}   // namespace

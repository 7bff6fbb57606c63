// The re-entrant lock and its guard, across threads.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "rastel/platform/framework.h"

namespace {

bool IsFreeForOthers(CCriticalSection& section) {
    bool isFree = false;
    std::thread([&] {
        isFree = section.TryLock();
        if (isFree) {
            section.Unlock();
        }
    }).join();
    return isFree;
}

TEST(CriticalSection, OneThreadMayLockItAgainOthersMustWaitForTheLastUnlock) {
    CCriticalSection section;
    EXPECT_TRUE(section.Lock());
    EXPECT_TRUE(section.Lock());
    EXPECT_TRUE(section.TryLock());
    EXPECT_TRUE(section.Unlock());
    EXPECT_TRUE(section.Unlock());
    EXPECT_FALSE(IsFreeForOthers(section));
    std::thread([&] { EXPECT_FALSE(section.Unlock()); }).join();   // it is not theirs to give back
    EXPECT_FALSE(IsFreeForOthers(section));
    EXPECT_TRUE(section.Unlock());
    EXPECT_TRUE(IsFreeForOthers(section));
    EXPECT_FALSE(section.Unlock());
    EXPECT_TRUE(IsFreeForOthers(section));
}

TEST(CriticalSection, KeepsThreadsOutOfEachOthersWay) {
    CCriticalSection section;
    int count = 0;   // plain on purpose
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < 5000; ++i) {
                const CSingleLock outer(&section, TRUE);
                const CSingleLock inner(&section, TRUE);
                ++count;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(count, 20000);
}

TEST(SingleLock, GivesBackWhatItTookAndNoMore) {
    CCriticalSection section;
    {
        CSingleLock lock(&section);
        EXPECT_FALSE(lock.IsLocked());
        EXPECT_FALSE(lock.Unlock());
        EXPECT_TRUE(lock.Lock());
        EXPECT_TRUE(lock.Lock());   // one guard, one count
        EXPECT_TRUE(lock.IsLocked());
        EXPECT_FALSE(IsFreeForOthers(section));
        EXPECT_TRUE(lock.Unlock());
        EXPECT_TRUE(IsFreeForOthers(section));
        EXPECT_TRUE(lock.Lock());
    }
    EXPECT_TRUE(IsFreeForOthers(section));
    CSingleLock none(nullptr, TRUE);
    EXPECT_FALSE(none.IsLocked());
    EXPECT_FALSE(none.Lock());
}

}   // namespace

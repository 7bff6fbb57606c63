// Clock, priorities, version, wide numbers and the last error.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <random>
#include <string>
#include <thread>

#include "rastel/platform/kernel.h"
#include "rastel/platform/portable/memory_display.h"

namespace {

TEST(Kernel, TheCounterNeverRunsBackwards) {
    LARGE_INTEGER last = {}, now = {}, frequency = {};
    ASSERT_TRUE(::QueryPerformanceFrequency(&frequency));
    EXPECT_EQ(frequency.QuadPart, 1'000'000'000);
    ASSERT_TRUE(::QueryPerformanceCounter(&last));
    for (int i = 0; i < 10000; ++i) {
        ASSERT_TRUE(::QueryPerformanceCounter(&now));
        ASSERT_GE(now.QuadPart, last.QuadPart);
        last = now;
    }
    EXPECT_FALSE(::QueryPerformanceCounter(nullptr));
    EXPECT_FALSE(::QueryPerformanceFrequency(nullptr));
}

TEST(Kernel, PrioritiesAreGivenBackAndForeignHandlesRefused) {
    EXPECT_TRUE(::SetPriorityClass(::GetCurrentProcess(), REALTIME_PRIORITY_CLASS));
    EXPECT_EQ(::GetPriorityClass(::GetCurrentProcess()), DWORD{REALTIME_PRIORITY_CLASS});
    EXPECT_FALSE(::SetPriorityClass(::GetCurrentProcess(), 0x123));
    EXPECT_FALSE(::SetPriorityClass(::GetCurrentThread(), NORMAL_PRIORITY_CLASS));
    EXPECT_TRUE(::SetPriorityClass(::GetCurrentProcess(), NORMAL_PRIORITY_CLASS));

    EXPECT_TRUE(::SetThreadPriority(::GetCurrentThread(), THREAD_PRIORITY_TIME_CRITICAL));
    std::thread([] { EXPECT_EQ(::GetThreadPriority(::GetCurrentThread()), THREAD_PRIORITY_NORMAL); }).join();
    EXPECT_EQ(::GetThreadPriority(::GetCurrentThread()), THREAD_PRIORITY_TIME_CRITICAL);
    EXPECT_TRUE(::SetThreadPriority(::GetCurrentThread(), THREAD_PRIORITY_NORMAL));
    EXPECT_FALSE(::SetThreadPriority(::GetCurrentThread(), 14));
    EXPECT_FALSE(::SetThreadPriority(nullptr, THREAD_PRIORITY_NORMAL));
}

TEST(Kernel, TheVersionIsWhatWasSetAndWantsItsSize) {
    OSVERSIONINFOW version = {};
    EXPECT_FALSE(::GetVersionExW(&version));
    EXPECT_FALSE(::GetVersionExW(nullptr));
    version.dwOSVersionInfoSize = sizeof(version);
    ASSERT_TRUE(::GetVersionExW(&version));
    EXPECT_EQ(version.dwPlatformId, DWORD{VER_PLATFORM_WIN32_NT});
    EXPECT_EQ(version.dwMajorVersion, 10u);
    rastel::platform::SetWindowsVersion(VER_PLATFORM_WIN32_WINDOWS, 4, 10);
    ASSERT_TRUE(::GetVersionExW(&version));
    EXPECT_EQ(version.dwPlatformId, DWORD{VER_PLATFORM_WIN32_WINDOWS});
    EXPECT_EQ(version.dwMinorVersion, 10u);
    rastel::platform::SetWindowsVersion(VER_PLATFORM_WIN32_NT, 10, 0);
}

TEST(Kernel, TheLastErrorBelongsToItsThread) {
    ::SetLastError(ERROR_MORE_DATA);
    std::thread([] {
        EXPECT_EQ(::GetLastError(), 0u);
        ::SetLastError(ERROR_ACCESS_DENIED);
    }).join();
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_MORE_DATA});
}

TEST(Kernel, NumbersAreReadAsFarAsTheyGo) {
    const std::pair<const wchar_t*, LONGLONG> cases[] = {{L"", 0},
                                                         {L"   ", 0},
                                                         {L"-", 0},
                                                         {L"+-1", 0},
                                                         {L"x1", 0},
                                                         {L"12x", 12},
                                                         {L" \t\n\u3000+007", 7},
                                                         {L"-0", 0},
                                                         {L"- 1", 0},
                                                         {L"9223372036854775807", INT64_MAX},
                                                         {L"9223372036854775808", INT64_MAX},
                                                         {L"-9223372036854775808", INT64_MIN},
                                                         {L"-9223372036854775809", INT64_MIN},
                                                         {L"99999999999999999999999999999999", INT64_MAX},
                                                         {L"-99999999999999999999999999999999", INT64_MIN}};
    for (const auto& [text, number] : cases) {
        EXPECT_EQ(::_wtoi64(text), number) << testing::PrintToString(text);
    }
    EXPECT_EQ(::_wtoi64(nullptr), 0);
    EXPECT_EQ(::lstrlenW(nullptr), 0);
    EXPECT_EQ(::lstrlenW(L"abc"), 3);
}

TEST(Kernel, NumbersAreWrittenInEveryRadix) {
    const auto written = [](LONGLONG value, int radix) {
        wchar_t buffer[65];
        EXPECT_EQ(::_i64tow(value, buffer, radix), buffer);
        return std::wstring(buffer);
    };
    EXPECT_EQ(written(0, 10), L"0");
    EXPECT_EQ(written(INT64_MIN, 10), L"-9223372036854775808");
    EXPECT_EQ(written(INT64_MIN, 2), L"1" + std::wstring(63, L'0'));
    EXPECT_EQ(written(-1, 16), L"ffffffffffffffff");
    EXPECT_EQ(written(-1, 36), L"3w5e11264sgsf");
    for (const int radix : {-1, 0, 1, 37, INT_MIN}) {
        EXPECT_EQ(written(5, radix), L"");
    }
    EXPECT_EQ(::_i64tow(5, nullptr, 10), nullptr);
    std::mt19937_64 random(3);
    for (int i = 0; i < 1000; ++i) {
        const auto value = static_cast<LONGLONG>(random() >> (i % 64));
        ASSERT_EQ(::_wtoi64(written(value, 10).c_str()), value);
    }
}

}   // namespace

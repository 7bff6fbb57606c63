// Files to be read, and what is no file.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "rastel/platform/kernel.h"
#include "tests/image/temporary_file.h"

using rastel::test::ByteVector;
using rastel::test::TemporaryFile;

namespace {

HANDLE Open(const std::wstring& name, DWORD access = GENERIC_READ, DWORD disposition = OPEN_EXISTING) {
    return ::CreateFileW(name.c_str(), access, FILE_SHARE_READ, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

TEST(Files, AreReadFromStartToEnd) {
    const TemporaryFile file({1, 2, 3, 4, 5}, "-\xC3\xA9.bin");
    const HANDLE handle = Open(file.Name());
    ASSERT_NE(handle, INVALID_HANDLE_VALUE);
    LARGE_INTEGER size = {};
    EXPECT_TRUE(::GetFileSizeEx(handle, &size));
    EXPECT_EQ(size.QuadPart, 5);
    BYTE bytes[8] = {};
    DWORD read = 9;
    EXPECT_TRUE(::ReadFile(handle, bytes, 3, &read, nullptr));
    EXPECT_EQ(read, 3u);
    EXPECT_TRUE(::ReadFile(handle, bytes + 3, 5, &read, nullptr));
    EXPECT_EQ(read, 2u);   // all that is left
    EXPECT_EQ(bytes[4], 5);
    EXPECT_TRUE(::ReadFile(handle, bytes, 8, &read, nullptr));
    EXPECT_EQ(read, 0u);
    EXPECT_FALSE(::ReadFile(handle, nullptr, 8, &read, nullptr));
    EXPECT_FALSE(::ReadFile(handle, bytes, 8, nullptr, nullptr));
    EXPECT_FALSE(::GetFileSizeEx(handle, nullptr));

    EXPECT_TRUE(::CloseHandle(handle));
    const HANDLE next = Open(file.Name());
    EXPECT_NE(next, handle);   // a closed handle stays closed
    EXPECT_FALSE(::CloseHandle(handle));
    EXPECT_FALSE(::ReadFile(handle, bytes, 1, &read, nullptr));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_FALSE(::GetFileSizeEx(INVALID_HANDLE_VALUE, &size));
    EXPECT_TRUE(::CloseHandle(next));
}

TEST(Files, AnythingElseIsRefusedWithoutWaiting) {
    const TemporaryFile place({});
    const std::wstring pipe = place.Name() + L".pipe";
    ASSERT_EQ(::mkfifo((place.Path().string() + ".pipe").c_str(), 0600), 0);
    for (const std::wstring& name : {pipe, std::wstring(L"/tmp"), std::wstring(L"/dev/zero")}) {
        EXPECT_EQ(Open(name), INVALID_HANDLE_VALUE);
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_ACCESS_DENIED});
    }
    std::filesystem::remove(place.Path().string() + ".pipe");
    EXPECT_EQ(Open(place.Name() + L".none"), INVALID_HANDLE_VALUE);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
    for (const std::wstring& name : {std::wstring(), std::wstring(L"/tmp/\xD800"), std::wstring(100000, L'x')}) {
        EXPECT_EQ(Open(name), INVALID_HANDLE_VALUE);
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
    }
    EXPECT_EQ(Open(place.Name(), GENERIC_READ | GENERIC_WRITE), INVALID_HANDLE_VALUE);
    EXPECT_EQ(Open(place.Name(), GENERIC_READ, OPEN_ALWAYS), INVALID_HANDLE_VALUE);
    EXPECT_EQ(::CreateFileW(nullptr, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr), INVALID_HANDLE_VALUE);
}

}   // namespace

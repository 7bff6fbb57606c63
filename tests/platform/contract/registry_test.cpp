// The user's registry.
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "rastel/platform/registry.h"

namespace {

class UserRegistry : public ::testing::Test {
protected:
    static constexpr const wchar_t* home = L"Software\\Rastel contract tests";

    void SetUp() override {
        Clear();
        ASSERT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER, home, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr),
                  ERROR_SUCCESS);
    }
    void TearDown() override {
        ::RegCloseKey(key);
        Clear();
    }
    static void Clear() {
        for (const wchar_t* const inner : {L"\\800x600", L"\\1024x768", L""}) {
            ::RegDeleteKeyW(HKEY_CURRENT_USER, (std::wstring(home) + inner).c_str());
        }
    }

    HKEY key = nullptr;
};

TEST_F(UserRegistry, ValuesComeBackToTheByteAndShortBuffersAreTold) {
    const wchar_t text[] = L"12345";
    ASSERT_EQ(::RegSetValueExW(key, L"Speed", 0, REG_SZ, reinterpret_cast<const BYTE*>(text), sizeof(text)),
              ERROR_SUCCESS);
    const DWORD number = 0x80FF00FE;
    ASSERT_EQ(::RegSetValueExW(key, L"Bits", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof(number)),
              ERROR_SUCCESS);
    DWORD type = 0, bytes = 0;
    ASSERT_EQ(::RegQueryValueExW(key, L"speed", nullptr, &type, nullptr, &bytes), ERROR_SUCCESS);
    EXPECT_EQ(type, DWORD{REG_SZ});
    EXPECT_EQ(bytes, sizeof(text));
    std::vector<BYTE> got(bytes);
    bytes = 4;
    EXPECT_EQ(::RegQueryValueExW(key, L"Speed", nullptr, &type, got.data(), &bytes), ERROR_MORE_DATA);
    EXPECT_EQ(bytes, sizeof(text));
    EXPECT_EQ(::RegQueryValueExW(key, L"Speed", nullptr, &type, got.data(), &bytes), ERROR_SUCCESS);
    EXPECT_EQ(std::memcmp(got.data(), text, sizeof(text)), 0);
    DWORD back = 0;
    bytes = sizeof(back);
    EXPECT_EQ(::RegQueryValueExW(key, L"Bits", nullptr, &type, reinterpret_cast<BYTE*>(&back), &bytes), ERROR_SUCCESS);
    EXPECT_EQ(back, number);
    EXPECT_EQ(type, DWORD{REG_DWORD});
    EXPECT_EQ(::RegQueryValueExW(key, L"none", nullptr, &type, nullptr, &bytes), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(::RegDeleteValueW(key, L"SPEED"), ERROR_SUCCESS);
    EXPECT_EQ(::RegDeleteValueW(key, L"SPEED"), ERROR_FILE_NOT_FOUND);
}

TEST_F(UserRegistry, KeysAreMadeOpenedListedAndDeleted) {
    HKEY inner = nullptr;
    DWORD disposition = 0;
    for (const wchar_t* const name : {L"800x600", L"1024x768"}) {
        ASSERT_EQ(::RegCreateKeyExW(key, name, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &inner, &disposition),
                  ERROR_SUCCESS);
        EXPECT_EQ(disposition, DWORD{REG_CREATED_NEW_KEY});
        ::RegCloseKey(inner);
    }
    ASSERT_EQ(::RegCreateKeyExW(key, L"800X600", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &inner, &disposition),
              ERROR_SUCCESS);
    EXPECT_EQ(disposition, DWORD{REG_OPENED_EXISTING_KEY});
    std::set<std::wstring> names;
    for (DWORD i = 0;; ++i) {
        wchar_t name[64];
        DWORD length = 64;
        const LSTATUS status = ::RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr);
        if (status != ERROR_SUCCESS) {
            EXPECT_EQ(status, ERROR_NO_MORE_ITEMS);
            break;
        }
        names.insert(std::wstring(name, length));
    }
    EXPECT_EQ(names, (std::set<std::wstring>{L"1024x768", L"800x600"}));
    EXPECT_EQ(::RegDeleteKeyW(HKEY_CURRENT_USER, home), ERROR_ACCESS_DENIED);   // keys are in it
    EXPECT_EQ(::RegDeleteKeyW(key, L"800x600"), ERROR_SUCCESS);
    EXPECT_NE(::RegSetValueExW(inner, L"v", 0, REG_SZ, nullptr, 0), ERROR_SUCCESS);   // the handle outlived its key
    ::RegCloseKey(inner);
    EXPECT_EQ(::RegOpenKeyExW(key, L"800x600", 0, KEY_READ, &inner), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(::RegOpenKeyExW(key, L"1024x768", 0, KEY_READ, &inner), ERROR_SUCCESS);
    EXPECT_EQ(::RegSetValueExW(inner, L"v", 0, REG_SZ, nullptr, 0), ERROR_ACCESS_DENIED);   // opened to read
    ::RegCloseKey(inner);
}

}   // namespace

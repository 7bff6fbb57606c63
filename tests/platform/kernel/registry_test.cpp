// Keys and values: what is stored comes back, and misuse is answered with an error.
#include <map>
#include <vector>

#include "tests/platform/kernel/registry_on_disk.h"

namespace {

class Registry : public rastel::test::RegistryOnDisk {};

TEST_F(Registry, TextIsKeptAsReadableFilesAndSurvivesItsHandle) {
    HKEY key = Make(L"Software\\Maker\\Display 800x600 (75 Hz)");
    const std::wstring text = L"-1234 \u00e4\u20ac\U0001F3A8\n\\ end";
    EXPECT_EQ(SetText(key, L"Speed", text), ERROR_SUCCESS);
    EXPECT_EQ(::RegCloseKey(key), ERROR_SUCCESS);
    EXPECT_EQ(::RegCloseKey(key), ERROR_INVALID_HANDLE);
    key = Make(L"SOFTWARE\\maker\\display 800X600 (75 hz)");
    EXPECT_EQ(Text(key, L"sPEED"), text);
    EXPECT_EQ(SetText(key, L"Speed", L"2"), ERROR_SUCCESS);
    EXPECT_EQ(Text(key, L"Speed"), L"2");
    EXPECT_EQ(::RegCloseKey(key), ERROR_SUCCESS);
    const auto folder = Root() / "software" / "maker" / "display 800x600 (75 hz)";
    EXPECT_NE(Contents(OnlyFile(folder)).find("\n2\n"), std::string::npos);
    EXPECT_EQ(std::filesystem::status(folder).permissions(), std::filesystem::perms::owner_all);
}

TEST_F(Registry, DataOfEveryTypeComesBackToTheByte) {
    const HKEY key = Make(L"Types");
    std::vector<BYTE> all(256);
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i] = static_cast<BYTE>(i);
    }
    const wchar_t open[] = {L'7', L'5'}, odd[] = {L'a', static_cast<wchar_t>(0xD800), L'\0'}, several[] = L"a\0b\0";
    const auto bytesOf = [](const auto& units) {
        const auto* const bytes = reinterpret_cast<const BYTE*>(units);
        return std::vector<BYTE>(bytes, bytes + sizeof(units));
    };
    const std::vector<std::pair<DWORD, std::vector<BYTE>>> cases = {
        {REG_BINARY, all},         {REG_NONE, {}},          {REG_SZ, {}},
        {REG_DWORD, {1, 2, 3, 4}}, {REG_SZ, bytesOf(open)}, {REG_SZ, bytesOf(odd)},
        {REG_SZ, {1, 2, 3}},       {7, bytesOf(several)},   {0xFFFFFFFF, {0, 10, 13}}};
    for (const auto& [type, data] : cases) {
        ASSERT_EQ(::RegSetValueExW(key, L"v", 0, type, data.data(), static_cast<DWORD>(data.size())), ERROR_SUCCESS);
        DWORD gotType = 99, bytes = 0;
        ASSERT_EQ(::RegQueryValueExW(key, L"v", nullptr, &gotType, nullptr, &bytes), ERROR_SUCCESS);
        EXPECT_EQ(gotType, type);
        ASSERT_EQ(bytes, data.size());
        std::vector<BYTE> got(bytes);
        if (bytes > 0) {
            BYTE untouched = 0x5A;
            DWORD room = bytes - 1;
            EXPECT_EQ(::RegQueryValueExW(key, L"v", nullptr, nullptr, &untouched, &room), ERROR_MORE_DATA);
            EXPECT_EQ(room, bytes);
            EXPECT_EQ(untouched, 0x5A);
        }
        EXPECT_EQ(::RegQueryValueExW(key, L"v", nullptr, nullptr, got.data(), &bytes), ERROR_SUCCESS);
        EXPECT_EQ(got, data);
    }
    ::RegCloseKey(key);
}

TEST_F(Registry, KeysAreMadeOpenedAndDeletedLevelByLevel) {
    EXPECT_EQ(Open(L"A"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Open(L""), ERROR_SUCCESS);   // the user's own key needs no file
    EXPECT_FALSE(std::filesystem::exists(Root()));
    HKEY key = nullptr;
    DWORD disposition = 0;
    const auto create = [&](const wchar_t* path) {
        const LSTATUS status =
            ::RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_READ, nullptr, &key, &disposition);
        return status == ERROR_SUCCESS ? ::RegCloseKey(key) : status;
    };
    EXPECT_EQ(create(L"A\\B"), ERROR_SUCCESS);
    EXPECT_EQ(disposition, DWORD{REG_CREATED_NEW_KEY});
    EXPECT_EQ(create(L"a\\b\\"), ERROR_SUCCESS);
    EXPECT_EQ(disposition, DWORD{REG_OPENED_EXISTING_KEY});
    for (const wchar_t* const bad : {L"\\A", L"A\\\\B", L"\\", L"\\\\"}) {
        EXPECT_EQ(create(bad), ERROR_BAD_PATHNAME) << testing::PrintToString(bad);
    }
    std::wstring deep;
    for (int level = 0; level < 600; ++level) {
        deep += L"x\\";
    }
    EXPECT_EQ(create(deep.c_str()), ERROR_INVALID_PARAMETER);

    const HKEY inner = Make(L"A\\B");
    EXPECT_EQ(SetText(inner, L"value", L"1"), ERROR_SUCCESS);
    EXPECT_EQ(::RegDeleteKeyW(HKEY_CURRENT_USER, L"A"), ERROR_ACCESS_DENIED);   // B is in it
    EXPECT_EQ(::RegDeleteKeyW(HKEY_CURRENT_USER, L""), ERROR_ACCESS_DENIED);
    EXPECT_EQ(::RegDeleteKeyW(HKEY_CURRENT_USER, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Text(inner, L"value"), L"1");
    EXPECT_EQ(::RegDeleteKeyW(HKEY_CURRENT_USER, L"a\\b"), ERROR_SUCCESS);
    EXPECT_EQ(SetText(inner, L"value", L"2"), ERROR_FILE_NOT_FOUND);   // the handle outlived its key
    EXPECT_EQ(Text(inner, L"value"), std::nullopt);
    EXPECT_EQ(::RegDeleteKeyW(HKEY_CURRENT_USER, L"A"), ERROR_SUCCESS);
    EXPECT_EQ(Open(L"A"), ERROR_FILE_NOT_FOUND);
    ::RegCloseKey(inner);
}

TEST_F(Registry, EnumerationGivesEachNameOnceInItsOwnCases) {
    const HKEY key = Make(L"Parent");
    const std::wstring longName(255, L'\u00c4');
    for (const std::wstring& name :
         {std::wstring(L"Sub Key"), std::wstring(L"sub key"), std::wstring(L"\u00c4.b"), longName}) {
        ::RegCloseKey(Make(name, key));
    }
    SetText(key, L"", L"own");
    SetText(key, L"Caf\u00c9", L"1");
    SetText(key, L"CAF\u00e9", L"2");   // the same value: the last name stays
    SetText(key, longName + longName, L"3");

    std::map<std::wstring, int> keys, values;
    wchar_t name[600];
    for (DWORD index = 0;; ++index) {
        DWORD length = 600;
        const LSTATUS status = ::RegEnumKeyExW(key, index, name, &length, nullptr, nullptr, nullptr, nullptr);
        if (status != ERROR_SUCCESS) {
            EXPECT_EQ(status, ERROR_NO_MORE_ITEMS);
            break;
        }
        ASSERT_EQ(length, std::wcslen(name));
        ++keys[name];
    }
    for (DWORD index = 0;; ++index) {
        DWORD length = 600, type = 0, bytes = 100;
        wchar_t text[25] = {};
        const LSTATUS status =
            ::RegEnumValueW(key, index, name, &length, nullptr, &type, reinterpret_cast<BYTE*>(text), &bytes);
        if (status != ERROR_SUCCESS) {
            EXPECT_EQ(status, ERROR_NO_MORE_ITEMS);
            break;
        }
        values[name] = std::stoi(text[0] == L'o' ? L"0" : text);
    }
    EXPECT_EQ(keys, (std::map<std::wstring, int>{{L"Sub Key", 1}, {L"\u00c4.b", 1}, {longName, 1}}));
    EXPECT_EQ(values, (std::map<std::wstring, int>{{L"", 0}, {L"CAF\u00e9", 2}, {longName + longName, 3}}));

    DWORD length = 3;   // shorter than any of the names
    EXPECT_EQ(::RegEnumKeyExW(key, 0, name, &length, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
    EXPECT_EQ(::RegDeleteValueW(key, L"caf\u00c9"), ERROR_SUCCESS);
    EXPECT_EQ(::RegDeleteValueW(key, L"caf\u00c9"), ERROR_FILE_NOT_FOUND);
    ::RegCloseKey(key);
}

TEST_F(Registry, HandlesAndRightsAreChecked) {
    const HKEY closed = Make(L"K");
    ::RegCloseKey(closed);
    HKEY out = nullptr;
    DWORD bytes = 0;
    for (const HKEY key :
         {HKEY{}, closed, reinterpret_cast<HKEY>(ULONG_PTR{0x80000002}), reinterpret_cast<HKEY>(&out)}) {
        EXPECT_EQ(::RegOpenKeyExW(key, L"K", 0, KEY_READ, &out), ERROR_INVALID_HANDLE);
        EXPECT_EQ(::RegCreateKeyExW(key, L"K", 0, nullptr, 0, KEY_READ, nullptr, &out, nullptr), ERROR_INVALID_HANDLE);
        EXPECT_EQ(::RegQueryValueExW(key, L"v", nullptr, nullptr, nullptr, &bytes), ERROR_INVALID_HANDLE);
        EXPECT_EQ(SetText(key, L"v", L"1"), ERROR_INVALID_HANDLE);
        EXPECT_EQ(::RegDeleteValueW(key, L"v"), ERROR_INVALID_HANDLE);
        EXPECT_EQ(::RegDeleteKeyW(key, L"K"), ERROR_INVALID_HANDLE);
        EXPECT_EQ(::RegCloseKey(key), ERROR_INVALID_HANDLE);
    }
    EXPECT_EQ(::RegCloseKey(HKEY_CURRENT_USER), ERROR_SUCCESS);

    const HKEY reader = Make(L"K", HKEY_CURRENT_USER, KEY_READ), writer = Make(L"K", HKEY_CURRENT_USER, KEY_WRITE);
    EXPECT_EQ(SetText(reader, L"v", L"1"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(SetText(writer, L"v", L"1"), ERROR_SUCCESS);
    EXPECT_EQ(::RegQueryValueExW(writer, L"v", nullptr, nullptr, nullptr, &bytes), ERROR_ACCESS_DENIED);
    EXPECT_EQ(Text(reader, L"v"), L"1");

    BYTE byte = 0;
    EXPECT_EQ(::RegOpenKeyExW(reader, L"", 0, KEY_READ, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(::RegQueryValueExW(reader, L"v", nullptr, nullptr, &byte, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(::RegSetValueExW(writer, L"v", 0, REG_SZ, nullptr, 8), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(::RegSetValueExW(writer, L"v", 0, REG_BINARY, &byte, 0xFFFFFFFF), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(::RegEnumKeyExW(reader, 0, nullptr, &bytes, nullptr, nullptr, nullptr, nullptr), ERROR_INVALID_PARAMETER);
    ::RegCloseKey(reader);
    ::RegCloseKey(writer);
}

TEST_F(Registry, WithoutAPlaceToWriteThereAreErrorsAndNothingElse) {
    for (const std::wstring& root : {std::wstring(L"/proc/no such place"), (Outer() / "file" / "store").wstring()}) {
        Overwrite(Outer() / "file", "");
        rastel::platform::SetRegistryRoot(root);
        HKEY key = nullptr;
        EXPECT_NE(::RegCreateKeyExW(HKEY_CURRENT_USER, L"K", 0, nullptr, 0, KEY_READ, nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(key, nullptr);
        EXPECT_NE(SetText(HKEY_CURRENT_USER, L"v", L"1"), ERROR_SUCCESS);
        EXPECT_EQ(Text(HKEY_CURRENT_USER, L"v"), std::nullopt);
        wchar_t name[8];
        DWORD length = 8;
        EXPECT_EQ(::RegEnumValueW(HKEY_CURRENT_USER, 0, name, &length, nullptr, nullptr, nullptr, nullptr),
                  ERROR_NO_MORE_ITEMS);
    }
}

TEST_F(Registry, TheUsersConfigurationFolderIsTheUsualPlace) {
    const auto variable = [](const char* name) {
        const char* const value = std::getenv(name);
        return value ? std::optional<std::string>(value) : std::nullopt;
    };
    const auto restore = [](const char* name, const std::optional<std::string>& value) {
        value ? ::setenv(name, value->c_str(), 1) : ::unsetenv(name);
    };
    const auto oldConfig = variable("XDG_CONFIG_HOME"), oldHome = variable("HOME");
    rastel::platform::SetRegistryRoot(L"");
    ::setenv("HOME", (Outer() / "home").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", "relative", 1);   // no place at all
    EXPECT_EQ(SetText(HKEY_CURRENT_USER, L"v", L"home"), ERROR_SUCCESS);
    EXPECT_TRUE(std::filesystem::is_directory(Outer() / "home/.config/rastel/registry"));
    ::setenv("XDG_CONFIG_HOME", (Outer() / "config").c_str(), 1);
    EXPECT_EQ(Text(HKEY_CURRENT_USER, L"v"), std::nullopt);
    EXPECT_EQ(SetText(HKEY_CURRENT_USER, L"v", L"config"), ERROR_SUCCESS);
    EXPECT_TRUE(std::filesystem::is_directory(Outer() / "config/rastel/registry"));
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(Text(HKEY_CURRENT_USER, L"v"), L"home");
    for (const char* const home : {"", "relative"}) {
        ::setenv("HOME", home, 1);
        EXPECT_NE(SetText(HKEY_CURRENT_USER, L"v", L"nowhere"), ERROR_SUCCESS);
        EXPECT_EQ(Open(L"K"), ERROR_PATH_NOT_FOUND);
    }
    restore("XDG_CONFIG_HOME", oldConfig);
    restore("HOME", oldHome);
}

}   // namespace

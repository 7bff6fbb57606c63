// Every name stays inside the store and is a key or value of its own.
#include <random>
#include <set>

#include "rastel/platform/portable/registry/names.h"
#include "tests/platform/kernel/registry_on_disk.h"

namespace registry = rastel::platform::registry;

namespace {

class RegistryNames : public rastel::test::RegistryOnDisk {};

const std::wstring longest(255, L'\u4e2d');
// No two of these are the same to the registry.
const std::wstring names[] = {L".",
                              L"..",
                              L"../up",
                              L"a/b",
                              L"/etc/passwd",
                              L"a",
                              L"con",
                              L"aux.txt",
                              L"a.value",
                              L".name",
                              L".new-1",
                              L"%61",
                              L"%",
                              L"~",
                              L"@",
                              L"a ",
                              L" a",
                              L"\x01\x02\n",
                              L"\x7f",
                              L"*?",
                              L"\u00e9",
                              L"e\u0301",
                              L"\u4e2d",
                              L"\U0001F3A8",
                              std::wstring(1, static_cast<wchar_t>(0xD800)),
                              std::wstring(255, L'a'),
                              std::wstring(254, L'a') + L"b",
                              longest,
                              longest.substr(1)};

TEST_F(RegistryNames, AnyNameIsAKeyAndAValueOfItsOwnAndLeadsNowhereElse) {
    const HKEY parent = Make(L"P");
    int number = 0;
    for (const std::wstring& name : names) {
        ++number;
        const HKEY key = Make(name, parent);
        EXPECT_EQ(SetText(key, name, std::to_wstring(number)), ERROR_SUCCESS) << number;
        EXPECT_EQ(SetText(parent, name, std::to_wstring(-number)), ERROR_SUCCESS) << number;
        ::RegCloseKey(key);
    }
    EXPECT_EQ(SetText(parent, L"", L"own"), ERROR_SUCCESS);
    number = 0;
    for (const std::wstring& name : names) {
        ++number;
        const HKEY key = Make(name, parent);
        EXPECT_EQ(Text(key, name), std::to_wstring(number));
        EXPECT_EQ(Text(parent, name), std::to_wstring(-number));
        ::RegCloseKey(key);
    }
    EXPECT_EQ(Text(parent, L""), L"own");
    std::size_t folders = 0;
    for (const auto& entry : std::filesystem::directory_iterator(Root() / "p")) {
        folders += entry.is_directory() ? 1 : 0;
    }
    EXPECT_EQ(folders, std::size(names));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(Outer()), {}), 1);
    ::RegCloseKey(parent);
}

TEST_F(RegistryNames, TooLongNamesAndWhatIsNoTextAreRefused) {
    HKEY key = nullptr;
    const std::wstring noText = std::wstring(L"a") + static_cast<wchar_t>(0x110000);
    for (const std::wstring& name : {std::wstring(256, L'a'), noText}) {
        EXPECT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER, name.c_str(), 0, nullptr, 0, KEY_READ, nullptr, &key, nullptr),
                  ERROR_INVALID_PARAMETER);
    }
    EXPECT_EQ(SetText(HKEY_CURRENT_USER, noText, L"1"), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(SetText(HKEY_CURRENT_USER, std::wstring(16383, L'\U0001F3A8'), L"1"), ERROR_SUCCESS);
    EXPECT_EQ(Text(HKEY_CURRENT_USER, std::wstring(16383, L'\U0001F3A8')), L"1");
    EXPECT_EQ(SetText(HKEY_CURRENT_USER, std::wstring(16384, L'a'), L"1"), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Text(HKEY_CURRENT_USER, std::wstring(16384, L'a')), std::nullopt);
}

TEST(RegistryNameForms, EscapingIsReversibleAndFitsTheFileSystem) {
    std::mt19937 random(7);
    std::set<std::string> files;
    std::set<std::wstring> folded;
    for (int round = 0; round < 4000; ++round) {
        std::wstring name;
        const std::size_t length = 1 + random() % (round % 3 ? 5 : 255);
        const std::uint32_t range = round % 2 ? 0x180 : 0x10FFFF;
        while (name.size() < length) {
            name += static_cast<wchar_t>(1 + random() % range);
        }
        const auto file = registry::KeyFolder(name);
        ASSERT_TRUE(file) << round;
        ASSERT_LE(registry::ValueFile(name)->size(), 255u);
        ASSERT_EQ(file->find_first_of("/."), std::string::npos);
        ASSERT_TRUE(registry::LooksLikeKeyFolder(*file)) << *file;
        ASSERT_TRUE(registry::LooksLikeValueFile(*registry::ValueFile(name)));
        ASSERT_EQ(registry::Unescaped(*registry::Escaped(name)), name);
        ASSERT_EQ(registry::Folded(registry::Folded(name)), registry::Folded(name));
        files.insert(*file);
        folded.insert(registry::Folded(name));
    }
    EXPECT_EQ(files.size(), folded.size());
    for (const char* const foreign :
         {"", "A", "%2f", "%61", "%C3%89", "%FF", "%00", "a.value", "a%", "a%2", "~", "..", ".name"}) {
        EXPECT_FALSE(registry::LooksLikeKeyFolder(foreign)) << foreign;
    }
}

}   // namespace

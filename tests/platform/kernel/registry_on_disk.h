// A registry in an empty folder of its own, and the few calls that most of its tests make.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "rastel/platform/portable/memory_display.h"
#include "rastel/platform/registry.h"

namespace rastel::test {

class RegistryOnDisk : public ::testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "rastel-registry-XXXXXX").string();
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        outer_ = pattern;
        rastel::platform::SetRegistryRoot(Root().wstring());
    }
    void TearDown() override {
        rastel::platform::SetRegistryRoot(L"");
        std::error_code error;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(outer_, error)) {
            if (entry.is_directory() && !entry.is_symlink()) {
                std::filesystem::permissions(entry, std::filesystem::perms::owner_all, error);
            }
        }
        std::filesystem::remove_all(outer_, error);
    }

    // The store lies one folder down, so that a test sees what gets out of it.
    const std::filesystem::path& Outer() const { return outer_; }
    std::filesystem::path Root() const { return outer_ / "store"; }

    static HKEY Make(const std::wstring& path, HKEY parent = HKEY_CURRENT_USER, REGSAM access = KEY_ALL_ACCESS) {
        HKEY key = nullptr;
        EXPECT_EQ(::RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, access, nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        return key;
    }
    static LSTATUS Open(const std::wstring& path, HKEY parent = HKEY_CURRENT_USER) {
        HKEY key = nullptr;
        const LSTATUS status = ::RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ, &key);
        EXPECT_EQ(status == ERROR_SUCCESS, key != nullptr);
        return key ? ::RegCloseKey(key) : status;
    }
    static LSTATUS SetText(HKEY key, const std::wstring& name, const std::wstring& text) {
        return ::RegSetValueExW(key, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                                static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }
    // Nothing where the value is not stored or is no closed text.
    static std::optional<std::wstring> Text(HKEY key, const std::wstring& name) {
        DWORD type = 0, bytes = 0;
        if (::RegQueryValueExW(key, name.c_str(), nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS || type != REG_SZ ||
            bytes < sizeof(wchar_t)) {
            return std::nullopt;
        }
        std::wstring text(bytes / sizeof(wchar_t), L'\0');
        if (::RegQueryValueExW(key, name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()), &bytes) !=
                ERROR_SUCCESS ||
            text.back() != L'\0') {
            return std::nullopt;
        }
        text.pop_back();
        return text;
    }
    // The only value file of a key's folder.
    static std::filesystem::path OnlyFile(const std::filesystem::path& folder) {
        std::filesystem::path found;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().extension() == ".value") {
                EXPECT_TRUE(found.empty()) << found << entry.path();
                found = entry.path();
            }
        }
        return found;
    }
    static std::string Contents(const std::filesystem::path& file) {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    static void Overwrite(const std::filesystem::path& file, const std::string& contents) {
        std::ofstream(file, std::ios::binary | std::ios::trunc) << contents;
    }

private:
    std::filesystem::path outer_;
};

}   // namespace rastel::test

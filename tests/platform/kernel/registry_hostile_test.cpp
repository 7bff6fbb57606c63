// Files that somebody else put into the store.
#include <sys/stat.h>

#include "tests/platform/kernel/registry_on_disk.h"

namespace fs = std::filesystem;

namespace {

class HostileRegistry : public rastel::test::RegistryOnDisk {
protected:
    void SetUp() override {
        RegistryOnDisk::SetUp();
        key_ = Make(L"K");
        ASSERT_EQ(SetText(key_, L"v", L"good"), ERROR_SUCCESS);
        file_ = OnlyFile(Root() / "k");
        good_ = Contents(file_);
    }
    void TearDown() override {
        ::RegCloseKey(key_);
        RegistryOnDisk::TearDown();
    }
    // The value is not there, in any way, and writing it anew works.
    void ExpectUnstoredThenHealed(const std::string& what) {
        DWORD type = 0, bytes = 0;
        EXPECT_EQ(::RegQueryValueExW(key_, L"v", nullptr, &type, nullptr, &bytes), ERROR_FILE_NOT_FOUND) << what;
        wchar_t name[16];
        DWORD length = 16;
        EXPECT_EQ(::RegEnumValueW(key_, 0, name, &length, nullptr, nullptr, nullptr, nullptr), ERROR_NO_MORE_ITEMS);
        ASSERT_EQ(SetText(key_, L"v", L"good"), ERROR_SUCCESS) << what;
        ASSERT_EQ(Text(key_, L"v"), L"good") << what;
    }

    HKEY key_ = nullptr;
    fs::path file_;
    std::string good_;
};

TEST_F(HostileRegistry, ATornOrChangedFileIsNoValue) {
    for (std::size_t length = 0; length < good_.size(); ++length) {
        Overwrite(file_, good_.substr(0, length));
        ASSERT_EQ(Text(key_, L"v"), std::nullopt) << length;
    }
    for (std::size_t at = 0; at < good_.size(); ++at) {
        for (const int flipped : {1, 0x20, 0x80}) {
            std::string changed = good_;
            changed[at] = static_cast<char>(changed[at] ^ flipped);
            Overwrite(file_, changed);
            ASSERT_EQ(Text(key_, L"v"), std::nullopt) << "byte " << at << " xor " << flipped;
        }
    }
    for (const std::string& more : {good_ + "\n", "\n" + good_, good_ + good_, std::string(100, '\0')}) {
        Overwrite(file_, more);
        ExpectUnstoredThenHealed("longer");
    }
    Overwrite(file_, good_);
    EXPECT_EQ(Text(key_, L"v"), L"good");
}

TEST_F(HostileRegistry, AFileUnderAnothersNameIsNoValue) {
    fs::rename(file_, file_.parent_path() / "w.value");
    EXPECT_EQ(Text(key_, L"w"), std::nullopt);
    ExpectUnstoredThenHealed("renamed");
}

TEST_F(HostileRegistry, WhatIsNoRegularFileIsNeitherReadNorWaitedFor) {
    const auto replace = [this](const std::string& what, auto put) {
        fs::remove_all(file_);
        put();
        ExpectUnstoredThenHealed(what);
    };
    replace("pipe", [this] { ASSERT_EQ(::mkfifo(file_.c_str(), 0600), 0); });
    replace("loop", [this] { fs::create_symlink(file_.filename(), file_); });
    replace("device", [this] { fs::create_symlink("/dev/zero", file_); });
    replace("huge", [this] {
        Overwrite(file_, good_);
        fs::resize_file(file_, std::uintmax_t{1} << 40);
    });
    const fs::path elsewhere = Outer() / "elsewhere";
    Overwrite(elsewhere, good_);
    replace("link", [&] { fs::create_symlink(elsewhere, file_); });
    EXPECT_EQ(Contents(elsewhere), good_);

    fs::remove(file_);
    fs::create_directory(file_);
    EXPECT_EQ(Text(key_, L"v"), std::nullopt);
    EXPECT_EQ(SetText(key_, L"v", L"1"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(::RegDeleteValueW(key_, L"v"), ERROR_ACCESS_DENIED);
}

TEST_F(HostileRegistry, ALinkInAKeysPlaceLeadsNowhere) {
    const fs::path outside = Outer() / "outside";
    fs::create_directories(outside / "sub");
    fs::create_directory_symlink(outside, Root() / "linked");
    Overwrite(Root() / "file", "");
    for (const wchar_t* const name : {L"linked", L"linked\\sub", L"file"}) {
        HKEY key = nullptr;
        EXPECT_EQ(Open(name), ERROR_FILE_NOT_FOUND);
        EXPECT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER, name, 0, nullptr, 0, KEY_READ, nullptr, &key, nullptr),
                  ERROR_ACCESS_DENIED);
        EXPECT_NE(::RegDeleteKeyW(HKEY_CURRENT_USER, name), ERROR_SUCCESS);
    }
    EXPECT_TRUE(fs::exists(outside / "sub"));
    wchar_t name[16];
    DWORD length = 16;
    EXPECT_EQ(::RegEnumKeyExW(HKEY_CURRENT_USER, 1, name, &length, nullptr, nullptr, nullptr, nullptr),
              ERROR_NO_MORE_ITEMS);   // only K is a key
}

TEST_F(HostileRegistry, AKeyWithForeignFilesIsNotDeletedAndOldRemainsOfWritersAre) {
    const fs::path folder = Root() / "k", dead = folder / ".new-1-1-1", living = folder / ".new-2-2-2";
    Overwrite(folder / "notes.txt", "mine");
    EXPECT_EQ(::RegDeleteKeyW(HKEY_CURRENT_USER, L"K"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(Text(key_, L"v"), L"good");
    fs::remove(folder / "notes.txt");

    Overwrite(dead, "torn");
    Overwrite(living, "torn");
    fs::last_write_time(dead, fs::file_time_type::clock::now() - std::chrono::hours(2));
    EXPECT_EQ(SetText(key_, L"v", L"2"), ERROR_SUCCESS);
    EXPECT_FALSE(fs::exists(dead));
    EXPECT_TRUE(fs::exists(living));
    EXPECT_EQ(::RegDeleteKeyW(HKEY_CURRENT_USER, L"K"), ERROR_SUCCESS);
    EXPECT_FALSE(fs::exists(folder));
}

TEST_F(HostileRegistry, AHostileDisplayNameIsNotBelieved) {
    for (const char* const claimed : {"other", "", "..%2F", "%FF", "K\n"}) {
        Overwrite(Root() / "k" / ".name", claimed);
        wchar_t name[16];
        DWORD length = 16;
        EXPECT_EQ(::RegEnumKeyExW(HKEY_CURRENT_USER, 0, name, &length, nullptr, nullptr, nullptr, nullptr),
                  ERROR_SUCCESS);
        EXPECT_STREQ(name, L"k") << claimed;
    }
}

}   // namespace

// Several processes on one store.
#include <sys/wait.h>

#include "tests/platform/kernel/registry_on_disk.h"

namespace {

class SharedRegistry : public rastel::test::RegistryOnDisk {};

// Values of very different lengths, so that a mixture of two is neither.
std::wstring Written(int writer) {
    return std::wstring(writer == 0 ? 3 : 5000, writer == 0 ? L'a' : L'\u4e2d');
}

TEST_F(SharedRegistry, AReaderSeesOneWritersValueOrTheOthersNeverAMixture) {
    const HKEY key = Make(L"Shared");
    ASSERT_EQ(SetText(key, L"v", Written(0)), ERROR_SUCCESS);
    constexpr int writes = 150;
    pid_t writers[2] = {};
    for (int writer = 0; writer < 2; ++writer) {
        writers[writer] = ::fork();
        ASSERT_GE(writers[writer], 0);
        if (writers[writer] == 0) {
            int failures = 0;
            for (int i = 0; i < writes; ++i) {
                failures += SetText(key, L"v", Written(writer)) == ERROR_SUCCESS ? 0 : 1;
            }
            ::_exit(failures == 0 ? 0 : 1);
        }
    }
    int running = 2, reads = 0;
    while (running > 0) {
        DWORD type = 0, bytes = 6000 * sizeof(wchar_t);
        std::wstring text(6000, L'\0');
        ASSERT_EQ(::RegQueryValueExW(key, L"v", nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &bytes),
                  ERROR_SUCCESS);
        text.resize(bytes / sizeof(wchar_t) - 1);
        ASSERT_TRUE(text == Written(0) || text == Written(1)) << "read " << reads;
        ++reads;
        int status = 0;
        if (::waitpid(-1, &status, WNOHANG) > 0) {
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
            --running;
        }
    }
    EXPECT_GT(reads, 0);
    for (const auto& entry : std::filesystem::directory_iterator(Root() / "shared")) {
        EXPECT_FALSE(entry.path().filename().string().starts_with(".new-")) << entry.path();
    }
    ::RegCloseKey(key);
}

TEST_F(SharedRegistry, ProcessesThatMakeTheSameKeysAtOnceAllGetThem) {
    constexpr int makers = 4;
    for (int maker = 0; maker < makers; ++maker) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            const HKEY key = Make(L"One\\Two\\Three");
            const bool isKept = key && SetText(key, std::to_wstring(maker), L"1") == ERROR_SUCCESS;
            ::_exit(isKept ? 0 : 1);
        }
    }
    for (int maker = 0; maker < makers; ++maker) {
        int status = 0;
        ASSERT_GT(::waitpid(-1, &status, 0), 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    const HKEY key = Make(L"One\\Two\\Three");
    for (int maker = 0; maker < makers; ++maker) {
        EXPECT_EQ(Text(key, std::to_wstring(maker)), L"1");
    }
    ::RegCloseKey(key);
}

}   // namespace

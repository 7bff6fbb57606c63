// Icons out of modules: a library opened as data, and the tests' own program for Windows.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "rastel/image/dib_section.h"
#include "tests/platform/contract/own_program.h"

namespace {

std::wstring Media(const wchar_t* name) {
    const std::string folder = RASTEL_MEDIA_FOLDER "/";
    return std::wstring(folder.begin(), folder.end()) + name;
}

// Whether every size of the icon in the module is the one in the file that it was made from.
void ExpectIconsOfFile(HMODULE module, const wchar_t* name) {
    for (const int side : {16, 32, 48}) {
        winext::CDibSection own, file;
        ASSERT_EQ(own.LoadIconImage(module, name, side, side, 32), 1) << side;
        ASSERT_EQ(file.LoadIconImage(nullptr, Media(L"rastel.ico").c_str(), side, side, 32), 1) << side;
        ASSERT_EQ(own.GetWidth(), side);
        ASSERT_EQ(own.GetPitch(), file.GetPitch());
        EXPECT_EQ(std::memcmp(own.GetBits(), file.GetBits(), static_cast<std::size_t>(side * own.GetPitch())), 0)
            << side;
    }
    winext::CDibSection none;
    EXPECT_EQ(none.LoadIconImage(module, name, 17, 17, 32), 0);
    EXPECT_EQ(none.LoadIconImage(module, L"NO SUCH ICON", 16, 16, 32), 0);
}

TEST(ModuleIcons, ComeOutOfALibraryOpenedAsData) {
    const HMODULE library = ::LoadLibraryExW(Media(L"icons.dll").c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(library, nullptr);
    ExpectIconsOfFile(library, L"RASTEL");
    ::FreeLibrary(library);
}

TEST(ModuleIcons, ComeOutOfTheTestsOwnProgram) {
    const HMODULE program = rastel::test::OpenOwnProgram();
    if (!program) {
        GTEST_SKIP() << "not built for Windows here";
    }
    ExpectIconsOfFile(program, L"RASTEL");
    ExpectIconsOfFile(program, MAKEINTRESOURCEW(7));
    rastel::test::CloseOwnProgram(program);
}

}   // namespace

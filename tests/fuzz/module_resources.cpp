// PE files opened as data: their resources listed and read, their icons loaded.
#include "rastel/image/dib_section.h"
#include "rastel/platform/kernel.h"
#include "tests/fuzz/input_file_posix.h"

namespace {

BOOL CALLBACK ReadIcon(HMODULE module, LPCWSTR, LPWSTR name, LONG_PTR image) {
    for (const int side : {16, 32, 256}) {
        reinterpret_cast<winext::CDibSection*>(image)->LoadIconImage(module, name, side, side, 32);
    }
    return TRUE;
}

}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const rastel::fuzz::InputFile file(bytes, count);
    if (const HMODULE module = ::LoadLibraryExW(file.Name().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE)) {
        winext::CDibSection image;
        constexpr LONG_PTR iconGroup = 14;
        ::EnumResourceNamesW(module, reinterpret_cast<LPCWSTR>(iconGroup), ReadIcon,
                             reinterpret_cast<LONG_PTR>(&image));
        image.LoadIconImage(module, L"ICON", 16, 16, 32);
        ::FreeLibrary(module);
    }
    return 0;
}

// Icons out of a file and out of a module: opened, found and copied.
#include <filesystem>
#include <memory>
#include <type_traits>

#include "families.h"
#include "rastel/image/dib_section.h"
#include "rastel/platform/kernel.h"
#include "support/contenders.h"

namespace rastel::bench {

void AddIcons(Suite& suite) {
    const std::filesystem::path folder(RASTEL_MEDIA_FOLDER);
    const std::wstring file = (folder / "rastel.ico").wstring(), program = (folder / "icons.dll").wstring();
    suite.Add("icon", "memcpy", [](const Round& r) { CopyRows(r.to, r.fromNoise, r.width * 4, r.height); });
    suite.Add("icon", "Rastel, file", [file](const Round& r) {
        winext::CDibSection image;
        return image.LoadIconImage(nullptr, file.c_str(), r.width, r.height, 32);
    });
    suite.AddPrepared("icon", "Rastel, loaded module", [program](Scene&) {
        const std::shared_ptr<std::remove_pointer_t<HMODULE>> module(
            ::LoadLibraryExW(program.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE), ::FreeLibrary);
        return [module](const Round& r) {
            winext::CDibSection image;
            return image.LoadIconImage(module.get(), L"RASTEL", r.width, r.height, 32);
        };
    });
}

}   // namespace rastel::bench

// Where the registry lies: a folder that the host names, or a place in the user's own configuration.
#include <cstdlib>
#include <filesystem>
#include <mutex>

#include "rastel/platform/framework/characters.h"
#include "rastel/platform/portable/memory_display.h"
#include "rastel/platform/portable/registry/file_store.h"

namespace {

std::mutex rootMutex;
std::string chosenRoot;   // empty: the usual place

std::string AbsoluteVariable(const char* name) {
    const char* const value = std::getenv(name);
    return value && value[0] == '/' ? value : "";
}

}   // namespace

std::string rastel::platform::registry::StoreRoot() {
    {
        const std::lock_guard lock(rootMutex);
        if (!chosenRoot.empty()) {
            return chosenRoot;
        }
    }
    // A relative folder would move with the host's own, so it is none.
    const std::string configuration = AbsoluteVariable("XDG_CONFIG_HOME");
    if (!configuration.empty()) {
        return configuration + "/rastel/registry";
    }
    const std::string home = AbsoluteVariable("HOME");
    return home.empty() ? "" : home + "/.config/rastel/registry";
}

void rastel::platform::SetRegistryRoot(const std::wstring& folder) {
    std::string path;
    for (const wchar_t unit : folder) {
        const auto code = static_cast<char32_t>(unit);
        AppendUtf8(path, code <= 0x10FFFF ? code : 0xFFFD);
    }
    if (!path.empty() && path[0] != '/') {
        std::error_code error;
        path = (std::filesystem::current_path(error) / path).string();
    }
    const std::lock_guard lock(rootMutex);
    chosenRoot = std::move(path);
}

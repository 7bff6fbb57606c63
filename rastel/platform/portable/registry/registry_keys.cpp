// Opening, making, closing and deleting keys.
#include <algorithm>
#include <utility>

#include "rastel/platform/portable/registry/key_table.h"
#include "rastel/platform/portable/registry/names.h"

namespace rastel::platform::registry {
namespace {

constexpr std::size_t mostLevels = 512;

// The levels of a sub-key's name. Null or empty is the key itself.
LSTATUS SplitSubKey(LPCWSTR subKey, std::vector<std::wstring>& levels) {
    std::wstring_view rest = subKey ? subKey : L"";
    if (rest.ends_with(L'\\')) {
        rest.remove_suffix(1);
    }
    if (rest.empty()) {
        return subKey && *subKey ? ERROR_BAD_PATHNAME : ERROR_SUCCESS;
    }
    for (std::size_t start = 0; start <= rest.size();) {
        const std::size_t end = std::min(rest.find(L'\\', start), rest.size());
        const std::wstring_view level = rest.substr(start, end - start);
        start = end + 1;
        if (level.empty()) {
            return ERROR_BAD_PATHNAME;
        }
        if (!KeyFolder(level) || levels.size() == mostLevels) {
            return ERROR_INVALID_PARAMETER;
        }
        levels.emplace_back(level);
    }
    return ERROR_SUCCESS;
}

// The key that `subKey` names below `key`, whether it is there or not, and the names of the levels between.
LSTATUS Locate(HKEY key, LPCWSTR subKey, OpenKey& found, std::vector<std::wstring>& levels) {
    if (const LSTATUS status = UseKey(key, 0, found)) {
        return status;
    }
    if (const LSTATUS status = SplitSubKey(subKey, levels)) {
        return status;
    }
    for (const std::wstring& level : levels) {
        found.path.push_back(*KeyFolder(level));
    }
    return found.path.size() <= mostLevels ? ERROR_SUCCESS : ERROR_INVALID_PARAMETER;
}

// Keeps a name's own cases where the folder's name tells less.
LSTATUS KeepDisplayName(const Descriptor& folder, const std::wstring& level, const std::string& folderName) {
    const auto escaped = Escaped(level);
    return !escaped || *escaped == folderName ? ERROR_SUCCESS
                                              : WriteStored(folder, std::string(displayNameFile), *escaped);
}

LSTATUS MakeLevels(const KeyPath& path, const std::vector<std::wstring>& levels, bool& isNew) {
    const KeyPath parent(path.begin(), path.end() - static_cast<std::ptrdiff_t>(levels.size()));
    Descriptor folder;
    isNew = false;
    if (const LSTATUS status = parent.empty() ? OpenOrMakeRoot(folder) : OpenFolder(parent, folder)) {
        return status;
    }
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const std::string& name = path[parent.size() + i];
        Descriptor next;
        if (const LSTATUS status = OpenOrMakeFolder(folder, name, next, isNew)) {
            return status;
        }
        if (isNew) {
            if (const LSTATUS status = KeepDisplayName(next, levels[i], name)) {
                return status;
            }
        }
        folder = std::move(next);
    }
    return ERROR_SUCCESS;
}

// Removes what belongs to a key. Refuses, with nothing removed, where sub-keys or foreign files lie in the folder.
LSTATUS EmptyKey(const Descriptor& folder) {
    std::vector<FolderEntry> entries;
    if (const LSTATUS status = ListFolder(folder, entries)) {
        return status;
    }
    for (const FolderEntry& entry : entries) {
        const bool isOurs =
            LooksLikeValueFile(entry.name) || entry.name.starts_with(temporaryPrefix) || entry.name == displayNameFile;
        if (entry.isFolder || !isOurs) {
            return ERROR_ACCESS_DENIED;
        }
    }
    for (const FolderEntry& entry : entries) {
        const LSTATUS status = RemoveStored(folder, entry.name);
        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
            return status;
        }
    }
    return ERROR_SUCCESS;
}

}   // namespace
}   // namespace rastel::platform::registry

namespace registry = rastel::platform::registry;

LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR subKey, DWORD, REGSAM access, PHKEY result) {
    if (!result) {
        return ERROR_INVALID_PARAMETER;
    }
    *result = nullptr;
    registry::OpenKey opened;
    std::vector<std::wstring> levels;
    if (const LSTATUS status = registry::Locate(key, subKey, opened, levels)) {
        return status;
    }
    if (!opened.IsRoot()) {   // the user's root is there even while nothing is stored
        registry::Descriptor folder;
        if (const LSTATUS status = registry::OpenFolder(opened.path, folder)) {
            return status;
        }
    }
    opened.access = access;
    *result = registry::AddKey(std::move(opened));
    return ERROR_SUCCESS;
}

LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR subKey, DWORD reserved, LPWSTR, DWORD options, REGSAM access,
                        const SECURITY_ATTRIBUTES*, PHKEY result, LPDWORD disposition) {
    if (!result || !subKey || reserved != 0 || options != REG_OPTION_NON_VOLATILE) {
        return ERROR_INVALID_PARAMETER;
    }
    *result = nullptr;
    registry::OpenKey made;
    std::vector<std::wstring> levels;
    if (const LSTATUS status = registry::Locate(key, subKey, made, levels)) {
        return status;
    }
    bool isNew = false;
    if (const LSTATUS status = registry::MakeLevels(made.path, levels, isNew)) {
        return status;
    }
    made.access = access;
    *result = registry::AddKey(std::move(made));
    if (disposition) {
        *disposition = isNew ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
    }
    return ERROR_SUCCESS;
}

LSTATUS RegCloseKey(HKEY key) {
    return registry::CloseKey(key) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

LSTATUS RegDeleteKeyW(HKEY key, LPCWSTR subKey) {
    if (!subKey) {
        return ERROR_INVALID_PARAMETER;
    }
    registry::OpenKey target;
    std::vector<std::wstring> levels;
    if (const LSTATUS status = registry::Locate(key, subKey, target, levels)) {
        return status;
    }
    if (target.IsRoot()) {
        return ERROR_ACCESS_DENIED;
    }
    registry::Descriptor parent, folder;
    const registry::KeyPath parentPath(target.path.begin(), target.path.end() - 1);
    if (const LSTATUS status = registry::OpenFolder(target.path, folder)) {
        return status;
    }
    if (const LSTATUS status = registry::OpenFolder(parentPath, parent)) {
        return status;
    }
    if (const LSTATUS status = registry::EmptyKey(folder)) {
        return status;
    }
    return registry::RemoveFolder(parent, target.path.back());
}

// Walking over sub-keys and values. The order is that of their files' names, so it stays the same while nothing is
// added or removed.
#include <algorithm>
#include <cstring>
#include <optional>

#include "rastel/platform/portable/registry/key_table.h"
#include "rastel/platform/portable/registry/names.h"
#include "rastel/platform/portable/registry/stored_values.h"

namespace rastel::platform::registry {
namespace {

// A user's root that nobody has written to is an empty key.
LSTATUS ListKey(const OpenKey& key, Descriptor& folder, std::vector<FolderEntry>& entries) {
    if (const LSTATUS status = OpenFolder(key.path, folder)) {
        const bool isMissing = status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND;
        return key.IsRoot() && isMissing ? ERROR_NO_MORE_ITEMS : status;
    }
    return ListFolder(folder, entries);
}

std::optional<std::wstring> NameOfKey(const Descriptor& parent, const std::string& folderName) {
    Descriptor folder;
    std::string contents;
    constexpr std::size_t mostBytes = mostKeyNameUnits * 12;   // four bytes of UTF-8, three signs each
    if (OpenStep(parent, folderName, folder) == ERROR_SUCCESS &&
        ReadStored(folder, std::string(displayNameFile), mostBytes, contents) == ERROR_SUCCESS) {
        auto name = Unescaped(contents);
        if (name && KeyFolder(*name) == folderName) {
            return name;
        }
    }
    return NameOfKeyFolder(folderName);
}

// Lengths count units: on the way in with room for the closing null, on the way out without it.
LSTATUS HandOutName(const std::wstring& text, LPWSTR name, LPDWORD nameLength) {
    if (*nameLength <= text.size()) {
        return ERROR_MORE_DATA;
    }
    std::copy(text.begin(), text.end(), name);
    name[text.size()] = L'\0';
    *nameLength = static_cast<DWORD>(text.size());
    return ERROR_SUCCESS;
}

}   // namespace
}   // namespace rastel::platform::registry

namespace registry = rastel::platform::registry;

LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameLength, LPDWORD reserved, LPWSTR className,
                      LPDWORD classLength, void* lastWrite) {
    if (!name || !nameLength || reserved || (className && !classLength)) {
        return ERROR_INVALID_PARAMETER;
    }
    registry::OpenKey opened;
    if (const LSTATUS status = registry::UseKey(key, KEY_ENUMERATE_SUB_KEYS, opened)) {
        return status;
    }
    registry::Descriptor folder;
    std::vector<registry::FolderEntry> entries;
    if (const LSTATUS status = registry::ListKey(opened, folder, entries)) {
        return status;
    }
    DWORD at = 0;
    for (const registry::FolderEntry& entry : entries) {
        if (!entry.isFolder || !registry::LooksLikeKeyFolder(entry.name)) {
            continue;
        }
        const auto found = registry::NameOfKey(folder, entry.name);
        if (!found || at++ != index) {
            continue;
        }
        if (classLength) {
            if (className && *classLength > 0) {
                className[0] = L'\0';   // keys have no class
            }
            *classLength = 0;
        }
        if (lastWrite) {
            std::memset(lastWrite, 0, 8);
        }
        return registry::HandOutName(*found, name, nameLength);
    }
    return ERROR_NO_MORE_ITEMS;
}

LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD nameLength, LPDWORD reserved, LPDWORD type,
                      LPBYTE data, LPDWORD dataBytes) {
    if (!name || !nameLength || reserved || (data && !dataBytes)) {
        return ERROR_INVALID_PARAMETER;
    }
    registry::OpenKey opened;
    if (const LSTATUS status = registry::UseKey(key, KEY_QUERY_VALUE, opened)) {
        return status;
    }
    registry::Descriptor folder;
    std::vector<registry::FolderEntry> entries;
    if (const LSTATUS status = registry::ListKey(opened, folder, entries)) {
        return status;
    }
    DWORD at = 0;
    for (const registry::FolderEntry& entry : entries) {
        registry::Value value;
        if (!registry::LooksLikeValueFile(entry.name) ||
            registry::LoadValueFile(folder, entry.name, value) != ERROR_SUCCESS || at++ != index) {
            continue;
        }
        if (type) {
            *type = value.type;
        }
        const LSTATUS status = registry::HandOut(value, data, dataBytes);
        return status == ERROR_SUCCESS ? registry::HandOutName(value.name, name, nameLength) : status;
    }
    return ERROR_NO_MORE_ITEMS;
}

// Reading, writing and deleting values.
#include <algorithm>

#include "rastel/platform/portable/registry/key_table.h"
#include "rastel/platform/portable/registry/names.h"
#include "rastel/platform/portable/registry/stored_values.h"

namespace rastel::platform::registry {
namespace {

std::wstring_view NameOrNone(LPCWSTR name) {
    return name ? std::wstring_view(name) : std::wstring_view();
}

LSTATUS OpenForReading(const OpenKey& key, Descriptor& folder) {
    const LSTATUS status = OpenFolder(key.path, folder);
    return status == ERROR_PATH_NOT_FOUND ? ERROR_FILE_NOT_FOUND : status;
}

}   // namespace

LSTATUS LoadValueFile(const Descriptor& folder, const std::string& file, Value& value) {
    std::string contents;
    if (const LSTATUS status = ReadStored(folder, file, mostFileBytes, contents)) {
        return status;
    }
    auto parsed = ParseFile(contents);
    if (!parsed || ValueFile(parsed->name) != file) {
        return ERROR_FILE_NOT_FOUND;
    }
    value = std::move(*parsed);
    return ERROR_SUCCESS;
}

LSTATUS LoadValue(const Descriptor& folder, std::wstring_view name, Value& value) {
    const auto file = ValueFile(name);
    if (!file) {
        return ERROR_FILE_NOT_FOUND;
    }
    const LSTATUS status = LoadValueFile(folder, *file, value);
    return status == ERROR_SUCCESS && Folded(value.name) != Folded(name) ? ERROR_FILE_NOT_FOUND : status;
}

LSTATUS HandOut(const Value& value, LPBYTE data, LPDWORD dataBytes) {
    if (!dataBytes) {
        return ERROR_SUCCESS;
    }
    const DWORD room = *dataBytes;
    *dataBytes = static_cast<DWORD>(value.data.size());
    if (!data) {
        return ERROR_SUCCESS;
    }
    if (room < value.data.size()) {
        return ERROR_MORE_DATA;
    }
    std::copy(value.data.begin(), value.data.end(), data);
    return ERROR_SUCCESS;
}

}   // namespace rastel::platform::registry

namespace registry = rastel::platform::registry;

LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD dataBytes) {
    if (reserved || (data && !dataBytes)) {
        return ERROR_INVALID_PARAMETER;
    }
    registry::OpenKey opened;
    if (const LSTATUS status = registry::UseKey(key, KEY_QUERY_VALUE, opened)) {
        return status;
    }
    registry::Descriptor folder;
    if (const LSTATUS status = registry::OpenForReading(opened, folder)) {
        return status;
    }
    registry::Value value;
    if (const LSTATUS status = registry::LoadValue(folder, registry::NameOrNone(name), value)) {
        return status;
    }
    if (type) {
        *type = value.type;
    }
    return registry::HandOut(value, data, dataBytes);
}

LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD dataBytes) {
    if (reserved != 0 || (!data && dataBytes > 0) || dataBytes > registry::mostDataBytes) {
        return ERROR_INVALID_PARAMETER;
    }
    registry::OpenKey opened;
    if (const LSTATUS status = registry::UseKey(key, KEY_SET_VALUE, opened)) {
        return status;
    }
    registry::Value value;
    value.name = registry::NameOrNone(name);
    value.type = type;
    value.data.assign(data, data + dataBytes);
    const auto file = registry::ValueFile(value.name);
    const auto contents = registry::FileContents(value);
    if (!file || !contents) {
        return ERROR_INVALID_PARAMETER;
    }
    registry::Descriptor folder;
    if (const LSTATUS status =
            opened.IsRoot() ? registry::OpenOrMakeRoot(folder) : registry::OpenFolder(opened.path, folder)) {
        return status;
    }
    return registry::WriteStored(folder, *file, *contents);
}

LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name) {
    registry::OpenKey opened;
    if (const LSTATUS status = registry::UseKey(key, KEY_SET_VALUE, opened)) {
        return status;
    }
    const auto file = registry::ValueFile(registry::NameOrNone(name));
    if (!file) {
        return ERROR_FILE_NOT_FOUND;
    }
    registry::Descriptor folder;
    if (const LSTATUS status = registry::OpenForReading(opened, folder)) {
        return status;
    }
    return registry::RemoveStored(folder, *file);
}

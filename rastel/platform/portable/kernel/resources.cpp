#include <new>
#include <string>

#include "rastel/platform/portable/kernel.h"
#include "rastel/platform/portable/kernel/data_modules.h"

namespace {

using rastel::platform::DataModule;
using rastel::platform::FindDataModule;
using rastel::platform::PeFile;
using rastel::platform::ResourceKey;
using Bytes = std::span<const BYTE>;

// A resource's handle is the address of its data entry in the module's file.
std::optional<Bytes> DataOf(HMODULE module, HRSRC resource) {
    const std::shared_ptr<const DataModule> owner = FindDataModule(module);
    if (!owner) {
        return std::nullopt;
    }
    const ULONG_PTR into = reinterpret_cast<ULONG_PTR>(resource) - reinterpret_cast<ULONG_PTR>(owner->bytes.get());
    std::optional<Bytes> data = owner->file.Data(into);
    if (!data) {
        SetLastError(ERROR_INVALID_HANDLE);
    }
    return data;
}

}   // namespace

HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type) try {
    const std::shared_ptr<const DataModule> owner = FindDataModule(module);
    if (!owner) {
        return nullptr;
    }
    const std::optional<std::size_t> entry = owner->file.Find(ResourceKey(type), ResourceKey(name));
    if (!entry) {
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
        return nullptr;
    }
    return reinterpret_cast<HRSRC>(owner->bytes.get() + *entry);
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

HGLOBAL LoadResource(HMODULE module, HRSRC resource) {
    const std::optional<Bytes> data = DataOf(module, resource);
    return data ? const_cast<BYTE*>(data->data()) : nullptr;
}

LPVOID LockResource(HGLOBAL resource) {
    return rastel::platform::IsInDataModule(resource) ? resource : nullptr;
}

DWORD SizeofResource(HMODULE module, HRSRC resource) {
    const std::optional<Bytes> data = DataOf(module, resource);
    return data ? static_cast<DWORD>(data->size()) : 0;   // files are smaller than 32 bits can tell
}

BOOL FreeResource(HGLOBAL) {
    return FALSE;
}

BOOL EnumResourceNamesW(HMODULE module, LPCWSTR type, ENUMRESNAMEPROCW callback, LONG_PTR parameter) try {
    if (!callback) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const std::shared_ptr<const DataModule> owner = FindDataModule(module);
    if (!owner) {
        return FALSE;
    }
    const std::vector<PeFile::Name> names = owner->file.Names(ResourceKey(type));
    if (names.empty()) {
        SetLastError(ERROR_RESOURCE_TYPE_NOT_FOUND);
        return FALSE;
    }
    for (const PeFile::Name& name : names) {
        if (name.isNumber && name.value > 0xFFFF) {
            continue;
        }
        std::optional<std::wstring> text = name.isNumber ? std::wstring() : owner->file.Text(name.value);
        if (text && !callback(module, type, name.isNumber ? MAKEINTRESOURCEW(name.value) : text->data(), parameter)) {
            return FALSE;
        }
    }
    return TRUE;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return FALSE;
}

#include "rastel/platform/portable/kernel/data_modules.h"
#include "rastel/platform/portable/kernel/module_table.h"
#include "rastel/platform/portable/memory_display.h"

namespace {

rastel::platform::ModuleTable& Modules() {
    // Never destroyed: a host may free a library from one of its own static objects.
    static auto* const table = new rastel::platform::ModuleTable(rastel::platform::BuiltinModules());
    return *table;
}

template <typename Result>
Result OrError(Result result, DWORD error) {
    if (!result) {
        SetLastError(error);
    }
    return result;
}

}   // namespace

HMODULE LoadLibraryW(LPCWSTR fileName) {
    if (!fileName) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return OrError(Modules().Load(fileName), ERROR_MOD_NOT_FOUND);
}

HMODULE LoadLibraryExW(LPCWSTR fileName, HANDLE reserved, DWORD flags) {
    constexpr DWORD asData =
        LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_DATAFILE_EXCLUSIVE | LOAD_LIBRARY_AS_IMAGE_RESOURCE;
    if (!fileName || reserved) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return flags & asData ? rastel::platform::LoadDataModule(fileName) : LoadLibraryW(fileName);
}

HMODULE GetModuleHandleW(LPCWSTR moduleName) {
    return moduleName ? OrError(Modules().FindLoaded(moduleName), ERROR_MOD_NOT_FOUND) : Modules().Process();
}

FARPROC GetProcAddress(HMODULE module, LPCSTR name) {
    if (!Modules().IsModule(module)) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    // A value of 16 bits is an entry point's number and no address. Built-in services have names only.
    const bool isNumber = reinterpret_cast<ULONG_PTR>(name) <= 0xFFFF;
    return OrError(isNumber ? nullptr : Modules().EntryPoint(module, name), ERROR_PROC_NOT_FOUND);
}

BOOL FreeLibrary(HMODULE module) {
    return OrError(BOOL{rastel::platform::FreeDataModule(module) || Modules().Free(module)}, ERROR_INVALID_HANDLE);
}

void rastel::platform::HideModule(const std::wstring& name, bool hidden) {
    Modules().Hide(name, hidden);
}

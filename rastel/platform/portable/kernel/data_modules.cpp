#include "rastel/platform/portable/kernel/data_modules.h"

#include <map>
#include <mutex>
#include <new>
#include <string>
#include <utility>

namespace rastel::platform {

namespace {

constexpr LONGLONG mostFileBytes = 0x20000000;   // the file lies in memory whole

struct Modules {
    std::mutex mutex;
    std::map<HMODULE, std::shared_ptr<const DataModule>> byHandle;
    ULONG_PTR next = 0x10001;   // odd, unlike any address of an object; above the numbers that stand for names
};

Modules& All() {
    // Never destroyed: a host may free a module from one of its own static objects.
    static auto* const modules = new Modules;
    return *modules;
}

std::unique_ptr<BYTE[]> ReadWhole(HANDLE file, std::size_t& size) {
    LARGE_INTEGER length = {};
    if (!::GetFileSizeEx(file, &length)) {
        return nullptr;
    }
    if (length.QuadPart > mostFileBytes) {
        SetLastError(ERROR_FILE_TOO_LARGE);
        return nullptr;
    }
    std::unique_ptr<BYTE[]> bytes(new (std::nothrow) BYTE[static_cast<std::size_t>(length.QuadPart) + 1]);
    if (!bytes) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    DWORD read = 0;
    if (!::ReadFile(file, bytes.get(), static_cast<DWORD>(length.QuadPart), &read, nullptr)) {
        return nullptr;
    }
    size = read;
    return bytes;
}

HANDLE Open(LPCWSTR path) {
    const auto open = [](LPCWSTR name) {
        return ::CreateFileW(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                             nullptr);
    };
    const HANDLE file = open(path);
    const std::wstring name(path);
    const std::size_t folder = name.find_last_of(L'/');
    if (file == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_NOT_FOUND &&
        name.find(L'.', folder == std::wstring::npos ? 0 : folder) == std::wstring::npos) {
        return open((name + L".dll").c_str());
    }
    return file;
}

}   // namespace

HMODULE LoadDataModule(LPCWSTR path) try {
    const HANDLE file = Open(path);
    if (file == INVALID_HANDLE_VALUE) {
        return nullptr;
    }
    std::size_t size = 0;
    std::unique_ptr<BYTE[]> bytes = ReadWhole(file, size);
    ::CloseHandle(file);
    if (!bytes) {
        return nullptr;
    }
    std::optional<PeFile> parsed = PeFile::Parse({bytes.get(), size});
    if (!parsed) {
        SetLastError(ERROR_BAD_EXE_FORMAT);
        return nullptr;
    }
    auto module = std::make_shared<const DataModule>(DataModule{std::move(bytes), size, std::move(*parsed)});
    const std::lock_guard lock(All().mutex);
    const auto handle = reinterpret_cast<HMODULE>(All().next);
    All().byHandle.emplace(handle, std::move(module));
    All().next += 2;
    return handle;
} catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

std::shared_ptr<const DataModule> FindDataModule(HMODULE module) {
    const std::lock_guard lock(All().mutex);
    const auto found = All().byHandle.find(module);
    if (found == All().byHandle.end()) {
        SetLastError(ERROR_RESOURCE_DATA_NOT_FOUND);
        return nullptr;
    }
    return found->second;
}

bool FreeDataModule(HMODULE module) {
    std::shared_ptr<const DataModule> last;   // freed behind the lock
    const std::lock_guard lock(All().mutex);
    const auto found = All().byHandle.find(module);
    if (found == All().byHandle.end()) {
        return false;
    }
    last = std::move(found->second);
    All().byHandle.erase(found);
    return true;
}

bool IsInDataModule(const void* address) {
    const auto wanted = reinterpret_cast<ULONG_PTR>(address);
    const std::lock_guard lock(All().mutex);
    for (const auto& [handle, module] : All().byHandle) {
        const auto start = reinterpret_cast<ULONG_PTR>(module->bytes.get());
        if (wanted >= start && wanted - start <= module->size) {
            return true;
        }
    }
    return false;
}

}   // namespace rastel::platform

// Files that are read from start to end.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <string>

#include "rastel/platform/framework/characters.h"
#include "rastel/platform/portable/kernel.h"

namespace {

class OpenFile {
public:
    explicit OpenFile(int descriptor) : descriptor_(descriptor) {}
    ~OpenFile() {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    int Descriptor() const { return descriptor_; }

private:
    int descriptor_;
};

struct Files {
    std::mutex mutex;
    std::map<HANDLE, std::shared_ptr<const OpenFile>> byHandle;
    ULONG_PTR next = 0x10000;   // never given out twice
};

Files& All() {
    // Never destroyed: a host may close a file from one of its own static objects.
    static auto* const files = new Files;
    return *files;
}

std::shared_ptr<const OpenFile> Find(HANDLE handle) {
    const std::lock_guard lock(All().mutex);
    const auto found = All().byHandle.find(handle);
    if (found == All().byHandle.end()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    return found->second;
}

HANDLE Fail(DWORD error) {
    SetLastError(error);
    return INVALID_HANDLE_VALUE;
}

DWORD ErrorOf(int error) {
    switch (error) {
        case ENOENT:
            return ERROR_FILE_NOT_FOUND;
        case ENOTDIR:
        case ELOOP:
        case ENAMETOOLONG:
            return ERROR_PATH_NOT_FOUND;
        case ENOMEM:
        case EMFILE:
        case ENFILE:
            return ERROR_NOT_ENOUGH_MEMORY;
        default:
            return ERROR_ACCESS_DENIED;
    }
}

// Empty for a path that is none: no text, or longer than any system takes.
std::string Utf8Path(LPCWSTR path) {
    constexpr std::size_t mostBytes = 4096;
    std::string bytes;
    for (; *path && bytes.size() < mostBytes; ++path) {
        const auto code = static_cast<char32_t>(*path);
        if (code > 0x10FFFF || rastel::platform::IsSurrogate(code)) {
            return {};
        }
        rastel::platform::AppendUtf8(bytes, code);
    }
    return *path ? std::string() : bytes;
}

}   // namespace

HANDLE CreateFileW(LPCWSTR fileName, DWORD access, DWORD, LPSECURITY_ATTRIBUTES, DWORD disposition, DWORD, HANDLE) try {
    if (!fileName || access != GENERIC_READ || disposition != OPEN_EXISTING) {
        return Fail(ERROR_INVALID_PARAMETER);
    }
    const std::string path = Utf8Path(fileName);
    if (path.empty()) {
        return Fail(ERROR_PATH_NOT_FOUND);
    }
    // Opening a pipe would wait for its writer.
    const auto file =
        std::make_shared<const OpenFile>(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (file->Descriptor() < 0) {
        return Fail(ErrorOf(errno));
    }
    struct stat status = {};
    if (::fstat(file->Descriptor(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return Fail(ERROR_ACCESS_DENIED);
    }
    const std::lock_guard lock(All().mutex);
    const auto handle = reinterpret_cast<HANDLE>(All().next);
    All().byHandle.emplace(handle, file);
    All().next += 4;
    return handle;
} catch (const std::bad_alloc&) {
    return Fail(ERROR_NOT_ENOUGH_MEMORY);
}

BOOL GetFileSizeEx(HANDLE file, LARGE_INTEGER* size) {
    const std::shared_ptr<const OpenFile> open = Find(file);
    if (!open) {
        return FALSE;
    }
    struct stat status = {};
    if (!size || ::fstat(open->Descriptor(), &status) != 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    size->QuadPart = status.st_size;
    return TRUE;
}

BOOL ReadFile(HANDLE file, LPVOID target, DWORD bytes, LPDWORD bytesRead, LPOVERLAPPED overlapped) {
    if (bytesRead) {
        *bytesRead = 0;
    }
    const std::shared_ptr<const OpenFile> open = Find(file);
    if (!open) {
        return FALSE;
    }
    if (!bytesRead || overlapped || (!target && bytes > 0)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    while (*bytesRead < bytes) {
        const ssize_t count = ::read(open->Descriptor(), static_cast<BYTE*>(target) + *bytesRead, bytes - *bytesRead);
        if (count == 0) {
            break;
        }
        if (count > 0) {
            *bytesRead += static_cast<DWORD>(count);
        } else if (errno != EINTR) {
            SetLastError(ERROR_READ_FAULT);
            return FALSE;
        }
    }
    return TRUE;
}

BOOL CloseHandle(HANDLE handle) {
    std::shared_ptr<const OpenFile> last;   // closed behind the lock
    const std::lock_guard lock(All().mutex);
    const auto found = All().byHandle.find(handle);
    if (found == All().byHandle.end()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    last = std::move(found->second);
    All().byHandle.erase(found);
    return TRUE;
}

#include "rastel/platform/portable/registry/file_store.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <ctime>
#include <memory>
#include <utility>

#include "rastel/platform/portable/registry/names.h"

namespace rastel::platform::registry {
namespace {

// A folder that is only passed through needs no right to be read.
constexpr int passFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;

LSTATUS StatusOf(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
        case ELOOP:
            return ERROR_FILE_NOT_FOUND;
        case ENOMEM:
        case EMFILE:
        case ENFILE:
            return ERROR_NOT_ENOUGH_MEMORY;
        case EIO:
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return ERROR_WRITE_FAULT;
        case ENAMETOOLONG:
            return ERROR_INVALID_PARAMETER;
        default:
            return ERROR_ACCESS_DENIED;
    }
}

template <typename Call>
auto Retried(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

// Some file systems cannot be asked to write through, and say so with these.
bool Synced(int descriptor) {
    return Retried([=] { return ::fsync(descriptor); }) == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS;
}

LSTATUS SyncFolder(const Descriptor& folder) {
    const Descriptor readable(::openat(folder.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!readable.IsOpen()) {
        // A folder may be writable and not readable; its entry is then written when the system gets round to it.
        return errno == EACCES ? ERROR_SUCCESS : StatusOf(errno);
    }
    return Synced(readable.Get()) ? ERROR_SUCCESS : ERROR_WRITE_FAULT;
}

LSTATUS OpenAt(const Descriptor& parent, const std::string& name, int flags, Descriptor& folder) {
    folder = Descriptor(::openat(parent.Get(), name.c_str(), flags));
    return folder.IsOpen() ? ERROR_SUCCESS : StatusOf(errno);
}

LSTATUS MakeStep(const Descriptor& parent, const std::string& name, int flags, Descriptor& folder, bool& isNew) {
    isNew = ::mkdirat(parent.Get(), name.c_str(), 0700) == 0;
    if (!isNew && errno != EEXIST) {
        return StatusOf(errno);
    }
    if (isNew) {
        if (const LSTATUS status = SyncFolder(parent)) {
            return status;
        }
    }
    const LSTATUS status = OpenAt(parent, name, flags, folder);
    return status == ERROR_FILE_NOT_FOUND ? ERROR_ACCESS_DENIED : status;   // something else has that name
}

// What a writer that died left behind. A living one takes far less than an hour.
void RemoveStaleTemporaries(const Descriptor& folder) {
    std::vector<FolderEntry> entries;
    if (ListFolder(folder, entries) != ERROR_SUCCESS) {
        return;
    }
    constexpr std::time_t longestWrite = 3600;
    for (const FolderEntry& entry : entries) {
        struct stat state = {};
        if (entry.name.starts_with(temporaryPrefix) &&
            ::fstatat(folder.Get(), entry.name.c_str(), &state, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(state.st_mode) &&
            std::time(nullptr) - state.st_mtime > longestWrite) {
            ::unlinkat(folder.Get(), entry.name.c_str(), 0);
        }
    }
}

// A new file under a name that no other writer uses, in this process or another.
Descriptor MakeTemporary(const Descriptor& folder, std::string& name) {
    static std::atomic<unsigned> serial = 0;
    for (int attempt = 0; attempt < 100; ++attempt) {
        timespec now = {};
        ::clock_gettime(CLOCK_REALTIME, &now);
        name = std::string(temporaryPrefix) + std::to_string(::getpid()) + '-' + std::to_string(serial++) + '-' +
               std::to_string(now.tv_nsec);
        Descriptor file(
            ::openat(folder.Get(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
        if (file.IsOpen() || errno != EEXIST) {
            return file;
        }
    }
    return Descriptor();
}

bool WriteAll(const Descriptor& file, std::string_view contents) {
    while (!contents.empty()) {
        const ssize_t written = Retried([&] { return ::write(file.Get(), contents.data(), contents.size()); });
        if (written <= 0) {
            return false;
        }
        contents.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}   // namespace

Descriptor::Descriptor(Descriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

Descriptor::~Descriptor() {
    if (descriptor_ >= 0) {
        const int error = errno;
        ::close(descriptor_);
        errno = error;
    }
}

LSTATUS OpenFolder(const KeyPath& path, Descriptor& folder) {
    const std::string root = StoreRoot();
    Descriptor at(root.empty() ? -1 : ::open(root.c_str(), passFlags));
    if (!at.IsOpen()) {
        return root.empty() ? ERROR_PATH_NOT_FOUND : StatusOf(errno);
    }
    for (const std::string& name : path) {
        Descriptor next;
        if (const LSTATUS status = OpenStep(at, name, next)) {
            return status;
        }
        at = std::move(next);
    }
    folder = std::move(at);
    return ERROR_SUCCESS;
}

LSTATUS OpenStep(const Descriptor& parent, const std::string& name, Descriptor& folder) {
    return OpenAt(parent, name, passFlags | O_NOFOLLOW, folder);
}

LSTATUS OpenOrMakeRoot(Descriptor& folder) {
    const LSTATUS opened = OpenFolder({}, folder);
    if (opened != ERROR_FILE_NOT_FOUND) {
        return opened;
    }
    // The way to the root is the user's own and may lead over links; only below it are they refused.
    const std::string root = StoreRoot();
    Descriptor at(::open("/", passFlags));
    for (std::size_t start = 0; at.IsOpen() && start < root.size();) {
        const std::size_t end = std::min(root.find('/', start), root.size());
        const std::string name = root.substr(start, end - start);
        start = end + 1;
        if (name.empty()) {
            continue;
        }
        Descriptor next;
        bool isNew = false;
        if (OpenAt(at, name, passFlags, next) != ERROR_SUCCESS) {
            if (const LSTATUS status = MakeStep(at, name, passFlags, next, isNew)) {
                return status;
            }
        }
        at = std::move(next);
    }
    folder = std::move(at);
    return folder.IsOpen() ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

LSTATUS OpenOrMakeFolder(const Descriptor& parent, const std::string& name, Descriptor& folder, bool& isNew) {
    isNew = false;
    const LSTATUS opened = OpenStep(parent, name, folder);
    return opened == ERROR_FILE_NOT_FOUND ? MakeStep(parent, name, passFlags | O_NOFOLLOW, folder, isNew) : opened;
}

LSTATUS ListFolder(const Descriptor& folder, std::vector<FolderEntry>& entries) {
    entries.clear();
    const int readable = ::openat(folder.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (readable < 0) {
        return StatusOf(errno);
    }
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::fdopendir(readable), ::closedir);
    if (!stream) {
        ::close(readable);
        return ERROR_NOT_ENOUGH_MEMORY;
    }
    while (const dirent* const entry = ::readdir(stream.get())) {
        const std::string name = entry->d_name;
        struct stat state = {};
        if (name != "." && name != ".." && ::fstatat(folder.Get(), name.c_str(), &state, AT_SYMLINK_NOFOLLOW) == 0) {
            entries.push_back({name, S_ISDIR(state.st_mode)});
        }
    }
    std::sort(entries.begin(), entries.end(),
              [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
    return ERROR_SUCCESS;
}

LSTATUS ReadStored(const Descriptor& folder, const std::string& name, std::size_t mostBytes, std::string& contents) {
    // Looked at before it is opened, for opening a device may already do something; looked at again when it is open,
    // for another may have taken its place. Without O_NONBLOCK that other could be a pipe that waits for a writer.
    struct stat state = {};
    if (::fstatat(folder.Get(), name.c_str(), &state, AT_SYMLINK_NOFOLLOW) != 0) {
        return StatusOf(errno);
    }
    if (!S_ISREG(state.st_mode)) {
        return ERROR_FILE_NOT_FOUND;
    }
    const Descriptor file(
        ::openat(folder.Get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.IsOpen() || ::fstat(file.Get(), &state) != 0) {
        return StatusOf(errno);
    }
    if (!S_ISREG(state.st_mode) || state.st_size < 0 || static_cast<std::uint64_t>(state.st_size) > mostBytes) {
        return ERROR_FILE_NOT_FOUND;
    }
    contents.assign(static_cast<std::size_t>(state.st_size), '\0');
    std::size_t done = 0;
    while (done < contents.size()) {
        const ssize_t count = Retried([&] { return ::read(file.Get(), &contents[done], contents.size() - done); });
        if (count < 0) {
            return StatusOf(errno);
        }
        if (count == 0) {
            break;
        }
        done += static_cast<std::size_t>(count);
    }
    contents.resize(done);
    return ERROR_SUCCESS;
}

LSTATUS WriteStored(const Descriptor& folder, const std::string& name, std::string_view contents) {
    RemoveStaleTemporaries(folder);
    std::string temporary;
    const Descriptor file = MakeTemporary(folder, temporary);
    if (!file.IsOpen()) {
        return StatusOf(errno);
    }
    const bool isWritten = WriteAll(file, contents) && Synced(file.Get()) &&
                           ::renameat(folder.Get(), temporary.c_str(), folder.Get(), name.c_str()) == 0;
    if (!isWritten) {
        const LSTATUS status = StatusOf(errno);
        ::unlinkat(folder.Get(), temporary.c_str(), 0);
        return status;
    }
    return SyncFolder(folder);
}

LSTATUS RemoveStored(const Descriptor& folder, const std::string& name) {
    return ::unlinkat(folder.Get(), name.c_str(), 0) == 0 ? SyncFolder(folder) : StatusOf(errno);
}

LSTATUS RemoveFolder(const Descriptor& parent, const std::string& name) {
    return ::unlinkat(parent.Get(), name.c_str(), AT_REMOVEDIR) == 0 ? SyncFolder(parent) : StatusOf(errno);
}

}   // namespace rastel::platform::registry

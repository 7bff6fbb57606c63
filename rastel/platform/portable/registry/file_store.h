// The registry's folders and files, reached step by step from the root so that no link inside leads
// out of it.
//
// Functions return a system error code of the registry; ERROR_SUCCESS is 0. Nothing here blocks on what it finds in
// a folder, and every write is whole or not there at all, on the disk too.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rastel/platform/portable/kernel.h"

namespace rastel::platform::registry {

// Owns a file descriptor; -1 is none.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor();

    int Get() const { return descriptor_; }
    bool IsOpen() const { return descriptor_ >= 0; }

private:
    int descriptor_ = -1;
};

// The folders of a key below the root, from the outermost.
using KeyPath = std::vector<std::string>;

struct FolderEntry {
    std::string name;
    bool isFolder;   // a real one; a link to a folder is none
};

// The root's path; empty where this user has no place to keep one.
std::string StoreRoot();

LSTATUS OpenFolder(const KeyPath& path, Descriptor& folder);
LSTATUS OpenStep(const Descriptor& parent, const std::string& name, Descriptor& folder);   // one level further
LSTATUS OpenOrMakeRoot(Descriptor& folder);
LSTATUS OpenOrMakeFolder(const Descriptor& parent, const std::string& name, Descriptor& folder, bool& isNew);

// Names in order of their bytes.
LSTATUS ListFolder(const Descriptor& folder, std::vector<FolderEntry>& entries);

// ERROR_FILE_NOT_FOUND for everything but a regular file of at most `mostBytes`.
LSTATUS ReadStored(const Descriptor& folder, const std::string& name, std::size_t mostBytes, std::string& contents);
LSTATUS WriteStored(const Descriptor& folder, const std::string& name, std::string_view contents);
LSTATUS RemoveStored(const Descriptor& folder, const std::string& name);
LSTATUS RemoveFolder(const Descriptor& parent, const std::string& name);

}   // namespace rastel::platform::registry

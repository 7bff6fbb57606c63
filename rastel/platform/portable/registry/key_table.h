// The open keys. A handle is a number that is never given out twice, so a closed one is known for what it is.
#pragma once

#include <optional>

#include "rastel/platform/portable/registry.h"
#include "rastel/platform/portable/registry/file_store.h"

namespace rastel::platform::registry {

struct OpenKey {
    KeyPath path;
    REGSAM access = 0;   // with the general rights spelled out
    bool IsRoot() const { return path.empty(); }
};

HKEY AddKey(OpenKey key);
// Nothing for a handle that is not open. The user's own root is always open, with all rights.
std::optional<OpenKey> FindKey(HKEY handle);
bool CloseKey(HKEY handle);

// Finds the key and asks for a right: ERROR_INVALID_HANDLE, ERROR_ACCESS_DENIED or ERROR_SUCCESS.
LSTATUS UseKey(HKEY handle, REGSAM right, OpenKey& key);

}   // namespace rastel::platform::registry

#include "rastel/platform/portable/registry/key_table.h"

#include <mutex>
#include <unordered_map>
#include <utility>

namespace rastel::platform::registry {
namespace {

struct Table {
    std::mutex mutex;
    std::unordered_map<ULONG_PTR, OpenKey> keys;
    ULONG_PTR next = 0x100;
};

Table& Keys() {
    // Never destroyed: a host may close a key from one of its own static objects.
    static auto* const table = new Table;
    return *table;
}

constexpr ULONG_PTR handleStep = 4;

REGSAM SpelledOut(REGSAM access) {
    constexpr REGSAM maximumAllowed = 0x02000000, genericAll = 0x10000000;
    constexpr REGSAM genericWrite = 0x40000000, genericRead = 0x80000000;
    access |= (access & (maximumAllowed | genericAll)) ? KEY_ALL_ACCESS : 0;
    access |= (access & genericWrite) ? KEY_WRITE : 0;
    access |= (access & genericRead) ? KEY_READ : 0;
    return access;
}

}   // namespace

HKEY AddKey(OpenKey key) {
    key.access = SpelledOut(key.access);
    const std::lock_guard lock(Keys().mutex);
    ULONG_PTR number = Keys().next;
    if (reinterpret_cast<HKEY>(number) == HKEY_CURRENT_USER) {
        number += handleStep;
    }
    Keys().next = number + handleStep;
    Keys().keys.emplace(number, std::move(key));
    return reinterpret_cast<HKEY>(number);
}

std::optional<OpenKey> FindKey(HKEY handle) {
    if (handle == HKEY_CURRENT_USER) {
        return OpenKey{{}, KEY_ALL_ACCESS};
    }
    const std::lock_guard lock(Keys().mutex);
    const auto found = Keys().keys.find(reinterpret_cast<ULONG_PTR>(handle));
    return found == Keys().keys.end() ? std::nullopt : std::optional(found->second);
}

bool CloseKey(HKEY handle) {
    if (handle == HKEY_CURRENT_USER) {
        return true;
    }
    const std::lock_guard lock(Keys().mutex);
    return Keys().keys.erase(reinterpret_cast<ULONG_PTR>(handle)) == 1;
}

LSTATUS UseKey(HKEY handle, REGSAM right, OpenKey& key) {
    auto found = FindKey(handle);
    if (!found) {
        return ERROR_INVALID_HANDLE;
    }
    key = std::move(*found);
    return (key.access & right) == right ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

}   // namespace rastel::platform::registry

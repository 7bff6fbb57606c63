// Values as the registry's functions see them: found by name, handed out into the caller's buffers.
#pragma once

#include <string>
#include <string_view>

#include "rastel/platform/portable/registry/file_store.h"
#include "rastel/platform/portable/registry/value_file.h"

namespace rastel::platform::registry {

// ERROR_FILE_NOT_FOUND where no whole value of that name is stored.
LSTATUS LoadValue(const Descriptor& folder, std::wstring_view name, Value& value);

// The value in a file of the folder; the file must be the one that the value's name belongs to.
LSTATUS LoadValueFile(const Descriptor& folder, const std::string& file, Value& value);

// Hands out data, or its size alone where `data` is null. ERROR_MORE_DATA, with the size needed, where it is longer
// than `*dataBytes`.
LSTATUS HandOut(const Value& value, LPBYTE data, LPDWORD dataBytes);

}   // namespace rastel::platform::registry

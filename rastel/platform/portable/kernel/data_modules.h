// The PE files that are loaded as data.
//
// Safe to use from several threads at once. A handle is a number that is never given out twice and that no other
// module's handle equals, so that a freed one is known for what it is.
#pragma once

#include <memory>

#include "rastel/platform/portable/kernel.h"
#include "rastel/platform/portable/kernel/pe_file.h"

namespace rastel::platform {

struct DataModule {
    std::unique_ptr<BYTE[]> bytes;
    std::size_t size;
    PeFile file;   // reads the bytes
};

HMODULE LoadDataModule(LPCWSTR path);                               // null, with the last error set
std::shared_ptr<const DataModule> FindDataModule(HMODULE module);   // null, with the last error set
bool FreeDataModule(HMODULE module);

// Whether an address lies in the file of any of them, or just behind it.
bool IsInDataModule(const void* address);

}   // namespace rastel::platform

#include "tests/platform/contract/own_program.h"

namespace rastel::test {

// Another build made it, if any did.
HMODULE OpenOwnProgram() {
    return ::LoadLibraryExW(L"" RASTEL_WINDOWS_PROGRAM, nullptr, LOAD_LIBRARY_AS_DATAFILE);
}

void CloseOwnProgram(HMODULE module) {
    ::FreeLibrary(module);
}

}   // namespace rastel::test

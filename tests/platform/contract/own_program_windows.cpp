#include "tests/platform/contract/own_program.h"

namespace rastel::test {

HMODULE OpenOwnProgram() {
    return ::GetModuleHandleW(nullptr);
}

void CloseOwnProgram(HMODULE) {}

}   // namespace rastel::test

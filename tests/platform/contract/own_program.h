// The tests' own program for Windows, as a module with resources.
#pragma once

#include "rastel/platform/kernel.h"

namespace rastel::test {

HMODULE OpenOwnProgram();   // null: it isn't there
void CloseOwnProgram(HMODULE module);

}   // namespace rastel::test

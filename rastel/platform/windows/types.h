// The system's own base types. Every other header of this folder comes through here, so that its macros are
// tamed in one place.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef STRICT
#define STRICT
#endif
#include <windows.h>

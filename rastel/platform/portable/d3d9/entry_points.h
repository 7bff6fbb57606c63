// What GetProcAddress finds in the two libraries.
#pragma once

#include "rastel/platform/portable/kernel/module_table.h"

namespace rastel::platform::d3d {

std::span<const ModuleEntryPoint> Direct3DEntryPoints();
std::span<const ModuleEntryPoint> D3dxEntryPoints();

}   // namespace rastel::platform::d3d

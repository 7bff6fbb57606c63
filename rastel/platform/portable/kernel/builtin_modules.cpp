#include "rastel/platform/portable/d3d9/entry_points.h"
#include "rastel/platform/portable/kernel/module_table.h"

namespace rastel::platform {

std::vector<BuiltinModule> BuiltinModules() {
    std::vector<BuiltinModule> modules = {{L"D3D9.DLL", d3d::Direct3DEntryPoints()}};
    constexpr int oldestD3DX = 24, newestD3DX = 34;
    for (int number = oldestD3DX; number <= newestD3DX; ++number) {
        modules.push_back({L"D3DX9_" + std::to_wstring(number) + L".DLL", d3d::D3dxEntryPoints()});
    }
    return modules;
}

}   // namespace rastel::platform

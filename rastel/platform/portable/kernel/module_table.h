// The services that answer to LoadLibraryW: a row a service, each with its names and its entry points.
//
// Safe to use from several threads at once. A table must outlive the handles that it gives out.
#pragma once

#include <array>
#include <cstddef>
#include <mutex>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "rastel/platform/portable/kernel.h"

namespace rastel::platform {

struct ModuleEntryPoint {
    const char* name;
    FARPROC function;
};

// A service without entry points is as good as absent: nothing loads it.
struct BuiltinModule {
    std::wstring name;   // as "D3D9.DLL"
    std::span<const ModuleEntryPoint> entryPoints;
};

// The rows of this build. A new service adds its row here and is found from then on.
std::vector<BuiltinModule> BuiltinModules();

class ModuleTable {
public:
    explicit ModuleTable(std::vector<BuiltinModule> modules);
    ModuleTable(const ModuleTable&) = delete;
    ModuleTable& operator=(const ModuleTable&) = delete;

    // The process itself, which is always there and has no entry points.
    HMODULE Process() { return HandleOf(rows_.size()); }

    // Names count without regard to case, ".dll" is added to a name without a dot. A name with a folder is a file, and
    // so none of these.
    HMODULE Load(std::wstring_view name);
    HMODULE FindLoaded(std::wstring_view name);
    bool IsModule(HMODULE module);   // loaded, or the process
    FARPROC EntryPoint(HMODULE module, std::string_view name);
    bool Free(HMODULE module);

    // A hidden module does not load; where it is loaded already, it stays.
    void Hide(std::wstring_view name, bool isHidden);

private:
    struct Row {
        BuiltinModule module;
        std::size_t loadCount = 0;
    };

    static std::wstring Normalized(std::wstring_view name);
    static constexpr std::size_t noRow = static_cast<std::size_t>(-1);

    // Handles are addresses in here, one more than there are rows: unique in the process and never followed.
    HMODULE HandleOf(std::size_t index) { return reinterpret_cast<HMODULE>(&handles_[index]); }
    std::size_t RowNamed(const std::wstring& normalized) const;
    std::size_t RowOf(HMODULE module);   // noRow: not loaded, or no module

    std::mutex mutex_;
    std::vector<Row> rows_;
    std::vector<std::max_align_t> handles_;
    std::set<std::wstring> hidden_;
};

}   // namespace rastel::platform

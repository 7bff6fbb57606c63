#include "rastel/platform/portable/kernel/module_table.h"

#include <algorithm>
#include <utility>

#include "rastel/platform/framework/characters.h"

namespace rastel::platform {

ModuleTable::ModuleTable(std::vector<BuiltinModule> modules) : handles_(modules.size() + 1) {
    for (BuiltinModule& module : modules) {
        module.name = Normalized(module.name);
        rows_.push_back({std::move(module)});
    }
}

HMODULE ModuleTable::Load(std::wstring_view name) {
    const std::wstring normalized = Normalized(name);
    const std::lock_guard lock(mutex_);
    const std::size_t row = RowNamed(normalized);
    if (row == noRow || rows_[row].module.entryPoints.empty() || hidden_.contains(normalized)) {
        return nullptr;
    }
    ++rows_[row].loadCount;
    return HandleOf(row);
}

HMODULE ModuleTable::FindLoaded(std::wstring_view name) {
    const std::wstring normalized = Normalized(name);
    const std::lock_guard lock(mutex_);
    const std::size_t row = RowNamed(normalized);
    return row != noRow && rows_[row].loadCount > 0 ? HandleOf(row) : nullptr;
}

bool ModuleTable::IsModule(HMODULE module) {
    const std::lock_guard lock(mutex_);
    return module == Process() || RowOf(module) != noRow;
}

FARPROC ModuleTable::EntryPoint(HMODULE module, std::string_view name) {
    const std::lock_guard lock(mutex_);
    const std::size_t row = RowOf(module);
    if (row == noRow) {
        return nullptr;
    }
    const auto& entryPoints = rows_[row].module.entryPoints;
    const auto found = std::find_if(entryPoints.begin(), entryPoints.end(),
                                    [name](const ModuleEntryPoint& entryPoint) { return name == entryPoint.name; });
    return found == entryPoints.end() ? nullptr : found->function;
}

bool ModuleTable::Free(HMODULE module) {
    const std::lock_guard lock(mutex_);
    if (module == Process()) {
        return true;
    }
    const std::size_t row = RowOf(module);
    if (row == noRow) {
        return false;
    }
    --rows_[row].loadCount;
    return true;
}

void ModuleTable::Hide(std::wstring_view name, bool isHidden) {
    std::wstring normalized = Normalized(name);
    const std::lock_guard lock(mutex_);
    if (isHidden) {
        hidden_.insert(std::move(normalized));
    } else {
        hidden_.erase(normalized);
    }
}

std::wstring ModuleTable::Normalized(std::wstring_view name) {
    std::wstring normalized(name);
    std::transform(normalized.begin(), normalized.end(), normalized.begin(), LowerUnit);
    if (normalized.find(L'.') == std::wstring::npos) {
        normalized += L".dll";
    } else if (normalized.back() == L'.') {
        normalized.pop_back();   // a closing dot says that there is no ending
    }
    return normalized;
}

std::size_t ModuleTable::RowNamed(const std::wstring& normalized) const {
    const auto found = std::find_if(rows_.begin(), rows_.end(),
                                    [&normalized](const Row& row) { return row.module.name == normalized; });
    return found == rows_.end() ? noRow : static_cast<std::size_t>(found - rows_.begin());
}

std::size_t ModuleTable::RowOf(HMODULE module) {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (HandleOf(i) == module) {
            return rows_[i].loadCount > 0 ? i : noRow;
        }
    }
    return noRow;
}

}   // namespace rastel::platform

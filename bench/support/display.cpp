#include "support/display.h"

#include <chrono>
#include <stdexcept>

#include "rastel/display/primary_surface.h"
#include "rastel/platform/portable/memory_display.h"
#include "rastel/surface/kernels.h"

namespace rastel::bench {

Display::Display() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    registry_ = std::filesystem::temp_directory_path() / ("rastel-bench-" + std::to_string(now));
    std::filesystem::create_directories(registry_);
    platform::SetRegistryRoot(registry_.wstring());

    manager_ = std::make_unique<CDisplayManager>();
    manager_->Initialize(nullptr);
    CPrimarySurface* const primary = manager_->CreatePrimarySurface();
    if (!primary) {
        throw std::runtime_error("the display has no primary surface");
    }
    CPrimarySurface::CPerformanceData data{};
    primary->GetPerformanceData(data);
    primary->Release();
    profile_ = "kernels " + std::string(kernels::Rows().name) + "; profile, calls a second at 640x480: copy own " +
               std::to_string(data.nCopyBltOwn) + ", GDI " + std::to_string(data.nCopyBltGDI) + "; fill own " +
               std::to_string(data.nFillColorOwn) + ", GDI " + std::to_string(data.nFillColorGDI);
}

Display::~Display() {
    manager_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(registry_, ignored);
}

}   // namespace rastel::bench

#include "tools/profile/report.h"

#include <cstdio>
#include <string>

#include "examples/support/display.h"
#include "rastel/surface/kernels.h"

namespace rastel::profile {

namespace {

constexpr double testPixels = 640.0 * 480.0;   // of each call that is measured

// Tells the names of chosen operations, which only a derived class may point to.
class ChoiceNames : public CSurface {
public:
    static const char* Copy() {
        return !s_pCopyBlt                                      ? "none"
               : s_pCopyBlt == &ChoiceNames::InternalCopyBltGDI ? "CopyBltGDI"
               : s_pCopyBlt == &ChoiceNames::InternalCopyBltMMX ? "CopyBltOwn"
                                                                : "CopyBlt";
    }
    static const char* Fill() {
        return !s_pFillColor                                        ? "none"
               : s_pFillColor == &ChoiceNames::InternalFillColorGDI ? "FillColorGDI"
               : s_pFillColor == &ChoiceNames::InternalFillColorMMX ||
                       s_pFillColor == &ChoiceNames::InternalFillColorCPU
                   ? "FillColorOwn"
                   : "FillColor";
    }
};

std::string Grouped(double value) {
    char digits[32];
    std::snprintf(digits, sizeof(digits), "%.0f", value);
    std::string text = digits;
    for (int at = static_cast<int>(text.size()) - 3; at > 0; at -= 3) {
        text.insert(static_cast<std::size_t>(at), ",");
    }
    return text;
}

void PrintTiming(const wchar_t* name, long long ticks, long long ticksEachSecond) {
    if (ticks <= 0) {
        std::printf("  %-14ls %14s %16s\n", name, "-", "-");
        return;
    }
    const double calls = static_cast<double>(ticksEachSecond) / static_cast<double>(ticks);
    std::printf("  %-14ls %14s %16s\n", name, Grouped(calls).c_str(), Grouped(calls * testPixels / 1e6).c_str());
}

}   // namespace

void PrintReport(ReportingManager& manager, const MeasuredPrimary& primary) {
    const CString id = manager.GetDisplayIdString();
    LARGE_INTEGER frequency = {};
    ::QueryPerformanceFrequency(&frequency);

    std::printf("Display        %ls\n", id.GetString());
    std::printf("Row table      %s\n\n", kernels::Rows().name);
    std::printf("  %-14s %14s %16s\n", "640 x 480", "calls/s", "megapixels/s");
    for (const wchar_t* const name : timingNames) {
        PrintTiming(name, manager.CDisplayManager::GetProfile(name), frequency.QuadPart);
    }
    std::printf("\nPresents by    %s\n", primary.ChosenPath());
    std::printf("Copies by      %s\n", ChoiceNames::Copy());
    std::printf("Fills by       %s\n\n", ChoiceNames::Fill());
    std::printf("Kept in        HKEY_CURRENT_USER/Software/Tessaly/Display Profiles/%ls\n", id.GetString());
    const std::string folder = example::TimingsFolder();
    if (!folder.empty()) {
        std::printf("In files of    %s\n", folder.c_str());
    }
}

}   // namespace rastel::profile

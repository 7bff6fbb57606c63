// Which copy and which fill are the fastest here: measured once for each display, then read back.
#include "rastel/display/display_manager.h"
#include "rastel/surface/measuring_priority.h"
#include "rastel/surface/mmx.h"
#include "rastel/surface/surface.h"

long long CSurface::s_perfFillColor = 0;
long long CSurface::s_perfFillColorOwn = 0;
long long CSurface::s_perfFillColorGDI = 0;
long long CSurface::s_perfCopyBlt = 0;
long long CSurface::s_perfCopyBltOwn = 0;
long long CSurface::s_perfCopyBltGDI = 0;

namespace {

// The average ticks of one call; the results don't matter.
template <class Call>
long long AverageTicks(Call call) {
    constexpr int passes = 10;
    const long long start = CDisplayManager::GetPerformanceTimer();
    for (int pass = 0; pass < passes; ++pass) {
        call(pass);
    }
    return (CDisplayManager::GetPerformanceTimer() - start) / passes;
}

}   // namespace

void CSurface::UseBestProfile() {
    s_pFillColor = &CSurface::InternalFillColor;
    long long best = s_perfFillColor;
    if (s_perfFillColorGDI < best) {
        s_pFillColor = &CSurface::InternalFillColorGDI;
        best = s_perfFillColorGDI;
    }
    if (s_perfFillColorOwn < best) {
        s_pFillColor = UseMMX() ? &CSurface::InternalFillColorMMX : &CSurface::InternalFillColorCPU;
    }

    s_pCopyBlt = &CSurface::InternalCopyBlt;
    best = s_perfCopyBlt;
    if (s_perfCopyBltOwn < best) {
        if (UseMMX()) {
            s_pCopyBlt = &CSurface::InternalCopyBltMMX;
        }
        best = s_perfCopyBltOwn;
    }
    if (s_perfCopyBltGDI < best) {
        s_pCopyBlt = &CSurface::InternalCopyBltGDI;
    }
}

void CSurface::Profile() {
    CDisplayManager* const manager = GetDisplayManager();
    if (!manager) {
        UseBestProfile();
        return;
    }
    s_perfFillColor = manager->GetProfile(L"FillColor");
    s_perfFillColorOwn = manager->GetProfile(L"FillColorOwn");
    s_perfFillColorGDI = manager->GetProfile(L"FillColorGDI");
    s_perfCopyBlt = manager->GetProfile(L"CopyBlt");
    s_perfCopyBltOwn = manager->GetProfile(L"CopyBltOwn");
    s_perfCopyBltGDI = manager->GetProfile(L"CopyBltGDI");
    if (s_perfFillColor > 0) {
        UseBestProfile();
        return;
    }

    CSurface* const first = manager->CreateSurface(640, 480);
    CSurface* const second = manager->CreateSurface(640, 480);
    if (first && second) {
        CRect rect(0, 0, 640, 480);
        const auto color = [](int pass) { return static_cast<DWORD>(pass); };
        const rastel::MeasuringPriority priority;
        s_perfFillColor = AverageTicks([&](int pass) { first->InternalFillColor(rect, color(pass)); });
        s_perfFillColorOwn = AverageTicks([&](int pass) { first->CSurface::InternalFillColor(rect, color(pass)); });
        s_perfFillColorGDI = AverageTicks([&](int pass) { first->InternalFillColorGDI(rect, color(pass)); });
        s_perfCopyBlt = AverageTicks([&](int) { first->InternalCopyBlt(0, 0, *second, rect); });
        s_perfCopyBltOwn = AverageTicks([&](int) { first->CSurface::InternalCopyBlt(0, 0, *second, rect); });
        s_perfCopyBltGDI = AverageTicks([&](int) { first->InternalCopyBltGDI(0, 0, *second, rect); });
    }
    const bool isMeasured = first && second;
    if (first) {
        first->Release();
    }
    if (second) {
        second->Release();
    }
    UseBestProfile();
    if (!isMeasured) {
        return;   // nothing worth keeping: the next start tries again
    }
    manager->SetProfile(L"FillColor", s_perfFillColor);
    manager->SetProfile(L"FillColorGDI", s_perfFillColorGDI);
    manager->SetProfile(L"FillColorOwn", s_perfFillColorOwn);
    manager->SetProfile(L"CopyBlt", s_perfCopyBlt);
    manager->SetProfile(L"CopyBltOwn", s_perfCopyBltOwn);
    manager->SetProfile(L"CopyBltGDI", s_perfCopyBltGDI);
}

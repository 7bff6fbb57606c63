// A memory display, an empty registry and a manager, for tests of the display classes.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "rastel/display/display_manager.h"
#include "rastel/display/primary_surface.h"
#include "rastel/platform/portable/memory_display.h"
#include "rastel/surface/surface.h"

namespace rastel::test {

// Opens the members and the ways that only a derived class sees.
class OpenPrimary : public CPrimarySurface {
public:
    using CPrimarySurface::Blt3Dsurface;
    using CPrimarySurface::BltBuffered;
    using CPrimarySurface::BltDirect;
    using CPrimarySurface::BltNoConvert;
    using CPrimarySurface::BltStretchDIBits;
    using CPrimarySurface::m_bProfiling;
    using CPrimarySurface::m_hDC;
    using CPrimarySurface::m_hPalette;
    using CPrimarySurface::m_nBitsPrPixel;
    using CPrimarySurface::m_nHeight;
    using CPrimarySurface::m_nWidth;
    using CPrimarySurface::m_perfBltBuffered;
    using CPrimarySurface::m_perfStretchDIBits;
    using CPrimarySurface::m_pfnBlt;
    using CPrimarySurface::m_pfnConvert;
    using CPrimarySurface::m_ptOrigin;
};

// Keeps timings in memory and writes down who asked for what.
class RecordingManager : public CDisplayManager {
public:
    std::map<std::wstring, long long> values;
    std::vector<std::wstring> reads, writes;

    long long GetProfile(const wchar_t* name) override {
        reads.emplace_back(name);
        const auto found = values.find(name);
        return found == values.end() ? -1 : found->second;
    }
    void SetProfile(const wchar_t* name, long long value) override {
        writes.emplace_back(name);
        values[name] = value;
    }
    // Timings under which nothing is measured.
    void StoreUsualTimings() {
        values = {{L"StretchDIBits", 1000}, {L"BltBuffered", 0},    {L"BltDirect", 0},      {L"BltNoConvert", 0},
                  {L"FillColor", 100},      {L"FillColorGDI", 200}, {L"FillColorOwn", 100}, {L"CopyBlt", 100},
                  {L"CopyBltOwn", 100},     {L"CopyBltGDI", 200}};
    }
};

class OnMemory : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = std::filesystem::temp_directory_path() /
                  ("rastel-display-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
                   std::to_string(reinterpret_cast<std::uintptr_t>(this)));
        rastel::platform::SetRegistryRoot(folder_.wstring());
        rastel::platform::UseMemoryDisplay({});
    }
    void TearDown() override {
        CSurface::s_pCopyBlt = nullptr;
        CSurface::s_pFillColor = nullptr;
        rastel::platform::FailDeviceCalls("CreateDCW", 0);
        rastel::platform::SetWindowsVersion(2, 10, 0);
        std::filesystem::remove_all(folder_);
    }
    static void UseDisplay(int width, int height, int bits) {
        rastel::platform::MemoryDisplayOptions options;
        options.width = width;
        options.height = height;
        options.bitsPerPixel = bits;
        rastel::platform::UseMemoryDisplay(options);
    }
    const std::filesystem::path& Folder() const { return folder_; }

private:
    std::filesystem::path folder_;
};

}   // namespace rastel::test

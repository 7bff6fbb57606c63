// The manager: the one instance, the factories, the store of timings.
#include <gtest/gtest.h>

#include <climits>

#include "rastel/alpha/alpha_channel.h"
#include "rastel/surface/dib_surface.h"
#include "tests/display/library_on_memory.h"

using rastel::test::OnMemory;
using rastel::test::OpenPrimary;

namespace {

class Manager : public OnMemory {
protected:
    void SetUp() override {
        OnMemory::SetUp();
        rastel::platform::MemoryDisplayOptions plain;
        plain.directDraw = plain.direct3D = false;
        rastel::platform::UseMemoryDisplay(plain);
    }
};

TEST_F(Manager, ThereIsOneAtATime) {
    EXPECT_EQ(GetDisplayManager(), nullptr);
    {
        CDisplayManager first;
        EXPECT_EQ(GetDisplayManager(), &first);
        EXPECT_EQ(CDirect3DWrapper::GetThis() == nullptr, false);
        int thrown = -1;
        try {
            CDisplayManager second;
        } catch (int value) {
            thrown = value;
        }
        EXPECT_EQ(thrown, 0);
        EXPECT_EQ(GetDisplayManager(), &first);
        EXPECT_EQ(CDirect3DWrapper::GetThis(), nullptr);
        EXPECT_EQ(first.Destroy(), 1);
        EXPECT_EQ(first.Destroy(), 1);
    }
    EXPECT_EQ(GetDisplayManager(), nullptr);
    CDisplayManager again;
    EXPECT_EQ(GetDisplayManager(), &again);
}

TEST_F(Manager, HandsOutStoresWithOneReference) {
    CDisplayManager manager;
    EXPECT_EQ(manager.Initialize(nullptr), 1);
    EXPECT_EQ(manager.GetDirectDraw(), nullptr);
    const LONG stores = CSurfaceBase::GetSurfacesAllocated(), bytes = CSurfaceBase::GetSurfaceMenory();
    CSurface* const surface = manager.CreateSurface(10, 20);
    CAlphaChannel* const plane = manager.CreateAlphaChannel(10, 20);
    ASSERT_TRUE(surface && plane);
    EXPECT_NE(dynamic_cast<CDibSurface*>(surface), nullptr);
    EXPECT_EQ(CSurfaceBase::GetSurfaceMenory(), bytes + 800 + 200);
    EXPECT_EQ(surface->Release(), 0);
    EXPECT_EQ(plane->Release(), 0);

    EXPECT_EQ(manager.CreateSurface(0, 10), nullptr);
    EXPECT_EQ(manager.CreateSurface(10, 0), nullptr);
    EXPECT_EQ(manager.CreateSurface(-10, 10), nullptr);
    EXPECT_EQ(manager.CreateSurface(INT_MAX, INT_MAX), nullptr);
    EXPECT_EQ(manager.CreateAlphaChannel(0, 0), nullptr);
    EXPECT_EQ(manager.CreateAlphaChannel(INT_MAX, INT_MAX), nullptr);
    rastel::platform::FailDeviceCalls("CreateDIBSection", 1);
    EXPECT_EQ(manager.CreateSurface(10, 10), nullptr);
    EXPECT_EQ(CSurfaceBase::GetSurfacesAllocated(), stores);
    EXPECT_EQ(CSurfaceBase::GetSurfaceMenory(), bytes);
}

TEST_F(Manager, ADisplayThatRefusesAContextGivesNoSurface) {
    CDisplayManager manager;
    rastel::platform::FailDeviceCalls("CreateDCW", 1);
    EXPECT_EQ(manager.CreateSurface(10, 10), nullptr);
    CSurface* const surface = manager.CreateSurface(10, 10);
    ASSERT_NE(surface, nullptr);
    rastel::platform::FailDeviceCalls("CreateCompatibleDC", 1);
    EXPECT_EQ(surface->GetDC(), nullptr);
    const HDC dc = surface->GetDC();
    EXPECT_NE(dc, nullptr);
    surface->ReleaseDC(dc);
    surface->Release();
}

TEST_F(Manager, RemembersTheDepthItFirstSaw) {
    UseDisplay(800, 600, 16);
    CDisplayManager manager;
    EXPECT_EQ(manager.GetBitsPrPixel(), 16);
}

TEST_F(Manager, TheDisplayIdNamesTheMode) {
    rastel::platform::MemoryDisplayOptions options;
    options.width = 800;
    options.height = 600;
    options.bitsPerPixel = 16;
    options.refreshHz = 75;
    options.name = L"Card/../One";
    rastel::platform::UseMemoryDisplay(options);
    CDisplayManager manager;
    EXPECT_STREQ(manager.GetDisplayIdString(), L"Card/../One 800x600 16 bits (75 Hz)");
    manager.SetProfile(L"CopyBlt", 42);
    EXPECT_EQ(manager.GetProfile(L"CopyBlt"), 42);
    // Each level of the id is a key of its own, and none of them leads out of the store.
    for (const auto& entry : std::filesystem::directory_iterator(Folder().parent_path())) {
        EXPECT_EQ(entry.path().filename().string().find("One 800x600"), std::string::npos);
    }

    rastel::platform::SetWindowsVersion(1, 4, 10);
    EXPECT_STREQ(manager.GetDisplayIdString(), L"Win95 800x600 16 bits (75 Hz)");
    EXPECT_EQ(manager.GetProfile(L"CopyBlt"), -1);   // another display
}

TEST_F(Manager, TimingsRoundTripAsDecimalText) {
    CDisplayManager manager;
    EXPECT_EQ(manager.GetProfile(L"CopyBlt"), -1);
    for (const long long value : {0LL, -1LL, 1234567LL, LLONG_MAX, LLONG_MIN}) {
        manager.SetProfile(L"CopyBlt", value);
        EXPECT_EQ(manager.GetProfile(L"CopyBlt"), value);
    }
    const HKEY key = manager.GetProfileKey();
    ASSERT_NE(key, nullptr);
    DWORD type = 0, bytes = 0;
    EXPECT_EQ(::RegQueryValueExW(key, L"CopyBlt", nullptr, &type, nullptr, &bytes), ERROR_SUCCESS);
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(bytes, sizeof(L"-9223372036854775808"));   // the closing null counts
    const wchar_t noNumber[] = L"soon";
    ::RegSetValueExW(key, L"FillColor", 0, REG_SZ, reinterpret_cast<const BYTE*>(noNumber), sizeof(noNumber));
    EXPECT_EQ(manager.GetProfile(L"FillColor"), 0);
    ::RegCloseKey(key);

    rastel::platform::SetRegistryRoot(L"/proc/no such place");
    EXPECT_EQ(manager.GetProfileKey(), nullptr);
    manager.SetProfile(L"CopyBlt", 1);
    EXPECT_EQ(manager.GetProfile(L"CopyBlt"), -1);
    rastel::platform::SetRegistryRoot(Folder().wstring());
}

}   // namespace

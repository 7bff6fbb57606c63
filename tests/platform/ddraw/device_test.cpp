// The DirectDraw object: where there is one, its modes and levels, and calls that fail.
#include <functional>
#include <set>
#include <tuple>

#include "tests/platform/ddraw/ddraw_test_support.h"

namespace rastel::test {
namespace {

class Device : public OnDirectDraw {};

constexpr DWORD kExclusive = DDSCL_EXCLUSIVE | DDSCL_FULLSCREEN;

TEST_F(Device, ThereIsNoneWhereTheDisplayHasNone) {
    const auto make = [](const CLSID& wantedClass, const IID& wanted, IUnknown* outer) {
        void* object = &outer;
        EXPECT_LT(CoCreateInstance(wantedClass, outer, CLSCTX_INPROC_SERVER, wanted, &object), 0);
        return object;
    };
    EXPECT_EQ(make(IID_IDirectDraw2, IID_IDirectDraw2, nullptr), nullptr);
    EXPECT_EQ(make(CLSID_DirectDraw, IID_IDirectDrawClipper, nullptr), nullptr);
    EXPECT_EQ(make(CLSID_DirectDraw, IID_IDirectDraw2, device.get()), nullptr);
    for (const char* const call : {"CoCreateInstance", "QueryInterface"}) {
        FailDeviceCalls(call, 1);
        EXPECT_EQ(make(CLSID_DirectDraw, IID_IDirectDraw2, nullptr), nullptr) << call;
    }
    device.reset();
    rastel::platform::MemoryDisplayOptions options;
    options.directDraw = false;
    rastel::platform::UseMemoryDisplay(options);
    EXPECT_EQ(make(CLSID_DirectDraw, IID_IDirectDraw2, nullptr), nullptr);
}

TEST_F(Device, OneObjectStandsBehindAllItsInterfacesAndLivesAsLongAsItsSurfaces) {
    void* found = nullptr;
    ASSERT_EQ(device->QueryInterface(IID_IDirectDraw, &found), S_OK);
    Com<IDirectDraw> first(static_cast<IDirectDraw*>(found));
    EXPECT_EQ(CountOf(*device), 2u);
    ASSERT_EQ(device->QueryInterface(IID_IUnknown, &found), S_OK);
    EXPECT_EQ(found, static_cast<IUnknown*>(first.get()));
    first->Release();
    Surface surface = Make(OffScreen(4, 4));
    first.reset();
    device.reset();
    EXPECT_EQ(Fill(*surface, nullptr, 7), DD_OK);
    LPVOID maker = nullptr;
    ASSERT_EQ(surface->GetDDInterface(&maker), DD_OK);
    surface.reset();
    EXPECT_EQ(static_cast<IDirectDraw*>(maker)->Release(), 0u);
}

TEST_F(Device, AModeNeedsTheExclusiveLevelAndGoesWithIt) {
    const Surface primary = Make(Primary());
    EXPECT_EQ(device->SetDisplayMode(320, 200, 16, 0, 0), DDERR_NOEXCLUSIVEMODE);
    EXPECT_EQ(device->RestoreDisplayMode(), DDERR_NOEXCLUSIVEMODE);
    for (const DWORD flags : {0u, DWORD{DDSCL_EXCLUSIVE}, kExclusive | DDSCL_NORMAL}) {
        EXPECT_LT(device->SetCooperativeLevel(nullptr, flags), 0) << flags;
    }
    ASSERT_EQ(device->SetCooperativeLevel(nullptr, kExclusive), DD_OK);
    for (const auto& [width, height, bits, refresh] :
         {std::tuple{321u, 200u, 16u, 0u}, {320u, 200u, 15u, 0u}, {~0u, ~0u, ~0u, 0u}, {320u, 200u, 16u, ~0u}}) {
        EXPECT_EQ(device->SetDisplayMode(width, height, bits, refresh, 0), DDERR_INVALIDMODE);
    }
    EXPECT_EQ(primary->IsLost(), DD_OK);
    ASSERT_EQ(device->SetDisplayMode(320, 200, 16, 0, 0), DD_OK);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 320);
    auto mode = Sized<DDSURFACEDESC>();
    ASSERT_EQ(device->GetDisplayMode(&mode), DD_OK);
    EXPECT_EQ(mode.dwHeight, 200u);
    EXPECT_EQ(mode.ddpfPixelFormat.dwRGBBitCount, 16u);
    EXPECT_EQ(mode.ddpfPixelFormat.dwGBitMask, 0x07E0u);
    EXPECT_EQ(primary->IsLost(), DDERR_SURFACELOST);
    ASSERT_EQ(device->SetCooperativeLevel(nullptr, DDSCL_NORMAL), DD_OK);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), kWidth);

    const auto take = [](IDirectDraw2& from) {
        EXPECT_EQ(from.SetCooperativeLevel(nullptr, kExclusive), DD_OK);
        EXPECT_EQ(from.SetDisplayMode(640, 400, 32, 0, 0), DD_OK);
    };
    take(*device);
    EXPECT_EQ(device->RestoreDisplayMode(), DD_OK);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), kWidth);
    take(*NewDevice());   // gone at once
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), kWidth);
}

TEST_F(Device, AModeThatCantGoBackYetIsNotForgotten) {
    ASSERT_EQ(device->SetCooperativeLevel(nullptr, kExclusive), DD_OK);
    ASSERT_EQ(device->SetDisplayMode(320, 200, 32, 0, 0), DD_OK);
    const Surface primary = Make(Primary());
    auto locked = Sized<DDSURFACEDESC>();
    ASSERT_EQ(primary->Lock(nullptr, &locked, DDLOCK_WAIT, nullptr), DD_OK);
    EXPECT_LT(device->RestoreDisplayMode(), 0);
    EXPECT_LT(device->SetCooperativeLevel(nullptr, DDSCL_NORMAL), 0);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 320);
    ASSERT_EQ(primary->Unlock(nullptr), DD_OK);
    EXPECT_EQ(device->SetCooperativeLevel(nullptr, DDSCL_NORMAL), DD_OK);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), kWidth);
}

HRESULT CALLBACK Collect(LPDDSURFACEDESC mode, LPVOID context) {
    auto& found = *static_cast<std::vector<DDSURFACEDESC>*>(context);
    found.push_back(*mode);
    return found.size() == 3 ? DDENUMRET_CANCEL : DDENUMRET_OK;
}

TEST_F(Device, ModesAreToldUntilTheCallerHasEnough) {
    std::vector<DDSURFACEDESC> modes;
    ASSERT_EQ(device->EnumDisplayModes(0, nullptr, &modes, Collect), DD_OK);
    ASSERT_EQ(modes.size(), 3u);
    EXPECT_EQ(modes[1].ddpfPixelFormat.dwRBitMask, 0xF800u);
    auto filter = Sized<DDSURFACEDESC>();
    filter.dwFlags = DDSD_WIDTH | DDSD_PIXELFORMAT;
    filter.dwWidth = 640;
    filter.ddpfPixelFormat.dwRGBBitCount = 32;
    modes.clear();
    ASSERT_EQ(device->EnumDisplayModes(0, &filter, &modes, Collect), DD_OK);
    ASSERT_EQ(modes.size(), 1u);
    EXPECT_EQ(modes[0].dwHeight, 400u);
    EXPECT_LT(device->EnumDisplayModes(0, nullptr, &modes, nullptr), 0);
    filter.dwSize = 1;
    EXPECT_LT(device->EnumDisplayModes(0, &filter, &modes, Collect), 0);
}

TEST_F(Device, ItSaysWhatItsBlitsCanDo) {
    auto driver = Sized<DDCAPS>(), emulation = Sized<DDCAPS>();
    ASSERT_EQ(device->GetCaps(&driver, &emulation), DD_OK);
    EXPECT_TRUE(driver.dwCaps & DDCAPS_BLTSTRETCH);
    EXPECT_TRUE(emulation.dwSSBRops[0xCC / 32] & 1u << 0xCC % 32);
    driver.dwSize = 0;
    EXPECT_LT(device->GetCaps(&driver, nullptr), 0);
    EXPECT_LT(device->GetCaps(nullptr, nullptr), 0);
}

TEST_F(Device, EveryCallFailsWhenItIsToldToAndWorksTheNextTime) {
    const Surface surface = Make(OffScreen(4, 4, kFormats[0])), other = Make(OffScreen(4, 4, kFormats[0]));
    const Com<IDirectDrawClipper> clipper = NewClipper();
    ASSERT_EQ(clipper->SetHWnd(0, nullptr), DD_OK);
    std::vector<PALETTEENTRY> entries(256);
    IDirectDrawPalette* palette = nullptr;
    ASSERT_EQ(device->CreatePalette(DDPCAPS_8BIT, entries.data(), &palette, nullptr), DD_OK);
    const Com<IDirectDrawPalette> held(palette);
    auto locked = Sized<DDSURFACEDESC>();
    auto pixels = Sized<DDPIXELFORMAT>();
    auto offered = Sized<DDCAPS>();
    DDSURFACEDESC description = OffScreen(2, 2);
    DDSCAPS caps{};
    DDCOLORKEY key{};
    HDC context = nullptr;
    DWORD number = 0;
    BOOL isChanged = FALSE;
    HWND window = nullptr;
    std::vector<DDSURFACEDESC> modes;
    // A pointer that is asked for is null after a failure.
    const auto out = [](auto* pointer, auto call) {
        const HRESULT result = call(&pointer);
        EXPECT_EQ(pointer != nullptr, result == S_OK);
        if (result == S_OK) {
            pointer->Release();
        }
        return result;
    };
    const auto ask = [&](IUnknown& object) {
        return out(&object,
                   [&](IUnknown** to) { return object.QueryInterface(IID_IUnknown, reinterpret_cast<void**>(to)); });
    };
    IDirectDrawSurface* surfaces = nullptr;
    IDirectDrawClipper* clippers = clipper.get();
    const std::pair<const char*, std::function<HRESULT()>> calls[] = {
        {"CreateSurface",
         [&] { return out(surfaces, [&](auto to) { return device->CreateSurface(&description, to, nullptr); }); }},
        {"CreateClipper",
         [&] { return out(clippers, [&](auto to) { return device->CreateClipper(0, to, nullptr); }); }},
        {"CreatePalette",
         [&] {
             return out(palette,
                        [&](auto to) { return device->CreatePalette(DDPCAPS_8BIT, entries.data(), to, nullptr); });
         }},
        {"QueryInterface", [&] { return ask(*device); }},
        {"QueryInterface", [&] { return ask(*surface); }},
        {"QueryInterface", [&] { return ask(*clipper); }},
        {"QueryInterface", [&] { return ask(*palette); }},
        {"SetCooperativeLevel", [&] { return device->SetCooperativeLevel(nullptr, kExclusive); }},
        {"SetDisplayMode", [&] { return device->SetDisplayMode(320, 200, 8, 0, 0); }},
        {"RestoreDisplayMode", [&] { return device->RestoreDisplayMode(); }},
        {"EnumDisplayModes", [&] { return device->EnumDisplayModes(0, nullptr, &modes, Collect); }},
        {"WaitForVerticalBlank", [&] { return device->WaitForVerticalBlank(DDWAITVB_BLOCKBEGIN, nullptr); }},
        {"GetDisplayMode", [&] { return device->GetDisplayMode(&locked); }},
        {"GetMonitorFrequency", [&] { return device->GetMonitorFrequency(&number); }},
        {"GetCaps", [&] { return device->GetCaps(&offered, nullptr); }},
        {"Compact", [&] { return device->Compact(); }},
        {"Restore", [&] { return surface->Restore(); }},
        {"IsLost", [&] { return surface->IsLost(); }},
        {"GetSurfaceDesc", [&] { return surface->GetSurfaceDesc(&locked); }},
        {"GetPixelFormat", [&] { return surface->GetPixelFormat(&pixels); }},
        {"GetCaps", [&] { return surface->GetCaps(&caps); }},
        {"Lock", [&] { return surface->Lock(nullptr, &locked, 0, nullptr); }},
        {"Unlock", [&] { return surface->Unlock(nullptr); }},
        {"GetDC", [&] { return surface->GetDC(&context); }},
        {"ReleaseDC", [&] { return surface->ReleaseDC(context); }},
        {"SetColorKey", [&] { return surface->SetColorKey(DDCKEY_SRCBLT, &key); }},
        {"GetColorKey", [&] { return surface->GetColorKey(DDCKEY_SRCBLT, &key); }},
        {"SetPalette", [&] { return surface->SetPalette(palette); }},
        {"GetPalette", [&] { return out(palette, [&](auto to) { return surface->GetPalette(to); }); }},
        {"Blt", [&] { return Fill(*surface, nullptr, 0); }},
        {"BltFast", [&] { return surface->BltFast(0, 0, other.get(), nullptr, 0); }},
        {"SetClipper", [&] { return surface->SetClipper(clipper.get()); }},
        {"GetClipper", [&] { return out(clippers, [&](auto to) { return surface->GetClipper(to); }); }},
        {"SetHWnd", [&] { return clipper->SetHWnd(0, nullptr); }},
        {"GetHWnd", [&] { return clipper->GetHWnd(&window); }},
        {"SetClipList", [&] { return clipper->SetClipList(nullptr, 0); }},
        {"IsClipListChanged", [&] { return clipper->IsClipListChanged(&isChanged); }},
        {"GetEntries", [&] { return palette->GetEntries(0, 0, 256, entries.data()); }},
        {"SetEntries", [&] { return palette->SetEntries(0, 0, 256, entries.data()); }},
        {"GetCaps", [&] { return palette->GetCaps(&number); }},
    };
    for (const auto& [name, call] : calls) {
        FailDeviceCalls(name, 1);
        EXPECT_EQ(call(), E_FAIL) << name;
        if (std::strcmp(name, "Restore") == 0) {
            EXPECT_EQ(surface->IsLost(), DDERR_SURFACELOST);   // the mode changed
            EXPECT_EQ(other->Restore(), DD_OK);
        }
        EXPECT_EQ(call(), S_OK) << name;
    }
}

}   // namespace
}   // namespace rastel::test

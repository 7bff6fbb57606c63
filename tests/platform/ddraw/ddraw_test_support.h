// A memory display of any depth with DirectDraw on it, and surfaces that are easy to make, fill and look at.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <memory>
#include <vector>

#include "rastel/platform/ddraw.h"
#include "rastel/platform/portable/gdi/pixel_rows.h"
#include "rastel/platform/portable/memory_display.h"
#include "rastel/platform/user.h"

namespace rastel::test {

using rastel::platform::FailDeviceCalls;
using rastel::platform::LoseDeviceSurfaces;
using rastel::platform::MemoryScreenPixel;

struct ReleaseCom {
    template <class Interface>
    void operator()(Interface* held) const {
        held->Release();
    }
};
template <class Interface>
using Com = std::unique_ptr<Interface, ReleaseCom>;
using Surface = Com<IDirectDrawSurface2>;

inline ULONG CountOf(IUnknown& object) {
    object.AddRef();
    return object.Release();
}

template <class Structure>
Structure Sized() {
    Structure structure{};
    structure.dwSize = sizeof(structure);
    return structure;
}

struct Format {
    int bits;
    DWORD red, green, blue;   // 0: indices
};
inline constexpr Format kFormats[] = {{8, 0, 0, 0},
                                      {15, 0x7C00, 0x03E0, 0x001F},
                                      {16, 0xF800, 0x07E0, 0x001F},
                                      {24, 0xFF0000, 0x00FF00, 0x0000FF},
                                      {32, 0xFF0000, 0x00FF00, 0x0000FF}};
inline constexpr Format kWords = kFormats[4];

inline DDSURFACEDESC OffScreen(int width, int height) {
    auto description = Sized<DDSURFACEDESC>();
    description.dwFlags = DDSD_CAPS | DDSD_WIDTH | DDSD_HEIGHT;
    description.dwWidth = static_cast<DWORD>(width);
    description.dwHeight = static_cast<DWORD>(height);
    description.ddsCaps.dwCaps = DDSCAPS_OFFSCREENPLAIN | DDSCAPS_SYSTEMMEMORY;
    return description;
}

inline DDSURFACEDESC OffScreen(int width, int height, const Format& format) {
    DDSURFACEDESC description = OffScreen(width, height);
    description.dwFlags |= DDSD_PIXELFORMAT;
    description.ddpfPixelFormat = Sized<DDPIXELFORMAT>();
    description.ddpfPixelFormat.dwFlags = DDPF_RGB | (format.red == 0 ? DDPF_PALETTEINDEXED8 : 0u);
    description.ddpfPixelFormat.dwRGBBitCount = static_cast<DWORD>(format.bits);
    description.ddpfPixelFormat.dwRBitMask = format.red;
    description.ddpfPixelFormat.dwGBitMask = format.green;
    description.ddpfPixelFormat.dwBBitMask = format.blue;
    return description;
}

inline DDSURFACEDESC Primary() {
    auto description = Sized<DDSURFACEDESC>();
    description.dwFlags = DDSD_CAPS;
    description.ddsCaps.dwCaps = DDSCAPS_PRIMARYSURFACE;
    return description;
}

using Words = std::vector<DWORD>;

class OnDirectDraw : public ::testing::Test {
protected:
    static constexpr int kWidth = 100, kHeight = 80, kPadding = 20;

    void SetUp() override { Start(kWords); }
    void TearDown() override {
        device.reset();
        rastel::platform::UseMemoryDisplay({});
    }

    void Start(const Format& format) {
        device.reset();
        rastel::platform::MemoryDisplayOptions options;
        options.width = kWidth;
        options.height = kHeight;
        options.bitsPerPixel = format.bits;
        options.pitchPadding = kPadding;
        options.modes = {{320, 200, 8}, {320, 200, 16}, {320, 200, 32}, {640, 400, 32}};
        rastel::platform::UseMemoryDisplay(options);
        device = NewDevice();
        ASSERT_TRUE(device);
    }

    static Com<IDirectDraw2> NewDevice() {
        void* made = nullptr;
        EXPECT_EQ(CoCreateInstance(CLSID_DirectDraw, nullptr, CLSCTX_INPROC_SERVER, IID_IDirectDraw2, &made), S_OK);
        Com<IDirectDraw2> found(static_cast<IDirectDraw2*>(made));
        if (found) {
            EXPECT_EQ(found->Initialize(nullptr), DD_OK);
            EXPECT_EQ(found->SetCooperativeLevel(nullptr, DDSCL_NORMAL), DD_OK);
        }
        return found;
    }

    Surface Make(DDSURFACEDESC description) const {
        IDirectDrawSurface* made = nullptr;
        EXPECT_EQ(device->CreateSurface(&description, &made, nullptr), DD_OK);
        if (!made) {
            return nullptr;
        }
        const Com<IDirectDrawSurface> first(made);
        void* second = nullptr;
        EXPECT_EQ(first->QueryInterface(IID_IDirectDrawSurface2, &second), S_OK);
        return Surface(static_cast<IDirectDrawSurface2*>(second));
    }

    Com<IDirectDrawClipper> NewClipper() const {
        IDirectDrawClipper* made = nullptr;
        EXPECT_EQ(device->CreateClipper(0, &made, nullptr), DD_OK);
        return Com<IDirectDrawClipper>(made);
    }

    std::unique_ptr<IDirectDraw2, ReleaseCom> device;
};

inline int StoredBits(const DDSURFACEDESC& description) {
    return static_cast<int>(description.ddpfPixelFormat.dwRGBBitCount + 1) / 8 * 8;
}

// All pixels as raw values, row by row.
inline Words Read(IDirectDrawSurface2& surface) {
    auto locked = Sized<DDSURFACEDESC>();
    EXPECT_EQ(surface.Lock(nullptr, &locked, DDLOCK_WAIT | DDLOCK_READONLY, nullptr), DD_OK);
    Words words;
    for (DWORD y = 0; locked.lpSurface && y < locked.dwHeight; ++y) {
        Words row(locked.dwWidth);
        rastel::platform::LoadRow(static_cast<unsigned char*>(locked.lpSurface) + static_cast<LONG>(y) * locked.lPitch,
                                  StoredBits(locked), 0, static_cast<int>(locked.dwWidth), row.data());
        words.insert(words.end(), row.begin(), row.end());
    }
    EXPECT_EQ(surface.Unlock(nullptr), DD_OK);
    return words;
}

inline void Write(IDirectDrawSurface2& surface, const Words& words) {
    auto locked = Sized<DDSURFACEDESC>();
    ASSERT_EQ(surface.Lock(nullptr, &locked, DDLOCK_WAIT, nullptr), DD_OK);
    ASSERT_EQ(words.size(), std::size_t{locked.dwWidth} * locked.dwHeight);
    for (DWORD y = 0; y < locked.dwHeight; ++y) {
        rastel::platform::StoreRow(static_cast<unsigned char*>(locked.lpSurface) + static_cast<LONG>(y) * locked.lPitch,
                                   StoredBits(locked), 0, static_cast<int>(locked.dwWidth),
                                   words.data() + y * locked.dwWidth);
    }
    ASSERT_EQ(surface.Unlock(nullptr), DD_OK);
}

inline HRESULT Fill(IDirectDrawSurface2& surface, const RECT* area, DWORD pixel, DWORD flags = DDBLT_WAIT) {
    auto effects = Sized<DDBLTFX>();
    effects.dwFillColor = pixel;
    RECT copy = area ? *area : RECT{};
    return surface.Blt(area ? &copy : nullptr, nullptr, nullptr, DDBLT_COLORFILL | flags, &effects);
}

inline HRESULT Blt(IDirectDrawSurface2& target, RECT to, IDirectDrawSurface2& source, RECT from,
                   DWORD flags = DDBLT_WAIT) {
    return target.Blt(&to, &source, &from, flags, nullptr);
}

inline Words Counted(int count, DWORD step = 0x00010305) {
    Words words;
    for (int i = 1; i <= count; ++i) {
        words.push_back(static_cast<DWORD>(i) * step);
    }
    return words;
}

}   // namespace rastel::test

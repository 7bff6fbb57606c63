// Surfaces that live on DirectDraw: what the device does, what it refuses, and surfaces that are lost.
#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "rastel/display/dx_surface.h"
#include "rastel/surface/dib_surface.h"
#include "rastel/surface/pixel_lock.h"
#include "rastel/surface/reference.h"
#include "tests/display/library_on_memory.h"
#include "tests/support/pixels.h"

using rastel::Reference;
using rastel::platform::FailDeviceCalls;
using rastel::platform::LoseDeviceSurfaces;
using rastel::test::OnMemory;
using rastel::test::PixelsOf;
using rastel::test::SetPixels;
using Words = std::vector<DWORD>;

namespace {

class OpenDevice : public CDxSurface {
public:
    OpenDevice(int width, int height) { EXPECT_EQ(InitializeSurface(width, height), 1); }
    using CDxSurface::InternalCopyBlt;
    using CDxSurface::InternalFillColor;
    using CDxSurface::InternalStretchBlt;
    using CDxSurface::InternalTransparentBlt;
};

class OpenMemory : public CDibSurface {
public:
    OpenMemory(int width, int height) { EXPECT_EQ(InitializeSurface(width, height), 1); }
    using CDibSurface::InternalCopyBlt;
    using CDibSurface::InternalStretchBlt;
};

class DeviceSurfaces : public OnMemory {
protected:
    void SetUp() override {
        OnMemory::SetUp();
        Start(32);
    }
    void TearDown() override {
        manager.reset();
        for (const char* const call : {"Lock", "Blt", "CreateSurface", "QueryInterface", "CreateClipper", "GetDC"}) {
            FailDeviceCalls(call, 0);
        }
        OnMemory::TearDown();
    }
    void Start(int bits) {
        manager.reset();
        rastel::platform::MemoryDisplayOptions options;
        options.width = 200;
        options.height = 150;
        options.bitsPerPixel = bits;
        options.pitchPadding = 24;
        rastel::platform::UseMemoryDisplay(options);
        manager = std::make_unique<CDisplayManager>();
        manager->Initialize(nullptr);
        ASSERT_NE(manager->GetDirectDraw(), nullptr);
    }
    static Words Counted(int width, int height) {
        Words words;
        for (int i = 0; i < width * height; ++i) {
            words.push_back(static_cast<DWORD>(i + 1) * 0x00010305u & 0xFFFFFF);
        }
        return words;
    }

    std::unique_ptr<CDisplayManager> manager;
};

TEST_F(DeviceSurfaces, TheManagerMakesThemWhereverThereIsDirectDraw) {
    const LONG bytes = CSurfaceBase::GetSurfaceMenory();
    const Reference<CSurface> surface(manager->CreateSurface(3, 20));
    ASSERT_TRUE(surface);
    EXPECT_NE(dynamic_cast<CDxSurface*>(surface.get()), nullptr);
    EXPECT_GT(surface->GetPitch(), 12);   // the driver's
    EXPECT_EQ(CSurfaceBase::GetSurfaceMenory(), bytes + 3 * 20 * 4);
    surface->Destroy();
    surface->Destroy();
    EXPECT_EQ(CSurfaceBase::GetSurfaceMenory(), bytes);

    for (const auto& [width, height] : {std::pair{-1, 5}, {5, INT_MIN}, {INT_MAX, INT_MAX}}) {
        EXPECT_EQ(manager->CreateSurface(width, height), nullptr);
    }
    for (const char* const call : {"CreateSurface", "QueryInterface"}) {
        FailDeviceCalls(call, 1);
        EXPECT_EQ(manager->CreateSurface(5, 5), nullptr) << call;
    }
    EXPECT_EQ(CSurfaceBase::GetSurfaceMenory(), bytes);
    manager->EnableDirectX(0);
    const Reference<CSurface> still(manager->CreateSurface(2, 2));
    EXPECT_NE(dynamic_cast<CDxSurface*>(still.get()), nullptr);   // until it starts again
    manager->Destroy();
    manager->Initialize(nullptr);
    const Reference<CSurface> memory(manager->CreateSurface(2, 2));
    EXPECT_NE(dynamic_cast<CDibSurface*>(memory.get()), nullptr);
}

TEST_F(DeviceSurfaces, FillCopyAndKeyAreTheDevices) {
    const Reference<OpenDevice> target(new OpenDevice(9, 7)), source(new OpenDevice(9, 7));
    CRect part(2, 1, 5, 4);
    EXPECT_EQ(target->InternalFillColor(part, 0x00112233), 1);
    Words wanted(63, 0);
    for (int y = 1; y < 4; ++y) {
        for (int x = 2; x < 5; ++x) {
            wanted[static_cast<std::size_t>(y * 9 + x)] = 0x00332211;
        }
    }
    Words drawn = PixelsOf(*target);
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        if (wanted[i] != 0) {
            EXPECT_EQ(drawn[i], wanted[i]);
        }
    }
    SetPixels(*source, Counted(9, 7));
    SetPixels(*target, Words(63, 0x00ABCDEF));
    EXPECT_EQ(target->InternalCopyBlt(6, 5, *source, CRect(1, 1, 4, 3)), 1);
    drawn = PixelsOf(*target);
    EXPECT_EQ(drawn[5 * 9 + 6] & 0xFFFFFF, Counted(9, 7)[1 * 9 + 1]);
    EXPECT_EQ(drawn[6 * 9 + 8] & 0xFFFFFF, Counted(9, 7)[2 * 9 + 3]);
    EXPECT_EQ(drawn[5 * 9 + 5], 0x00ABCDEFu);

    const DWORD key = Counted(9, 7)[10];
    EXPECT_EQ(target->InternalTransparentBlt(0, 0, *source, CSurface::RGB2COLOR(key), CRect(0, 1, 9, 2)), 1);
    drawn = PixelsOf(*target);
    EXPECT_EQ(drawn[1] & 0xFFFFFF, 0x00ABCDEFu);
    EXPECT_EQ(drawn[2] & 0xFFFFFF, Counted(9, 7)[11]);
}

TEST_F(DeviceSurfaces, AStretchIsLimitedByItsClipAndLeavesNoClipperBehind) {
    const Reference<OpenDevice> target(new OpenDevice(12, 12)), source(new OpenDevice(3, 3));
    SetPixels(*source, Counted(3, 3));
    SetPixels(*target, Words(144, 0x00777777));
    CRect place(0, 0, 12, 12), whole(0, 0, 3, 3), clip(4, 4, 8, 20), outside(50, 50, 60, 60);
    EXPECT_EQ(target->InternalStretchBlt(place, *source, whole, &clip), 1);
    const Words drawn = PixelsOf(*target);
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 12; ++x) {
            const bool isInside = x >= 4 && x < 8 && y >= 4;
            EXPECT_EQ(drawn[static_cast<std::size_t>(y * 12 + x)] & 0xFFFFFF,
                      isInside ? Counted(3, 3)[static_cast<std::size_t>(y / 4 * 3 + x / 4)] : 0x00777777u)
                << x << ' ' << y;
        }
    }
    EXPECT_EQ(target->InternalStretchBlt(place, *source, whole, &outside), 1);   // through an empty list
    EXPECT_EQ(PixelsOf(*target), drawn);
    CRect all(0, 0, 12, 12);
    EXPECT_EQ(target->InternalFillColor(all, 0), 1);   // no clip is left
    EXPECT_EQ(PixelsOf(*target)[0] & 0xFFFFFF, 0u);
    CRect mirrored(11, 0, -1, 12);   // backwards from its corner
    EXPECT_NE(target->InternalStretchBlt(mirrored, *source, whole, nullptr), 0);
    EXPECT_EQ(PixelsOf(*target)[0] & 0xFFFFFF, Counted(3, 3)[2]);
    FailDeviceCalls("CreateClipper", 1);
    EXPECT_EQ(target->InternalStretchBlt(place, *source, whole, nullptr), 0);
}

TEST_F(DeviceSurfaces, OtherStoresAreRefusedByTheDeviceAndTakenByMemory) {
    const Reference<OpenDevice> device(new OpenDevice(4, 4));
    const Reference<OpenMemory> memory(new OpenMemory(4, 4));
    SetPixels(*memory, Counted(4, 4));
    CRect rect(0, 0, 4, 4);
    EXPECT_EQ(device->InternalCopyBlt(0, 0, *memory, rect), 0);
    EXPECT_EQ(device->InternalTransparentBlt(0, 0, *memory, 0, rect), 0);
    EXPECT_EQ(device->InternalStretchBlt(rect, *memory, rect, nullptr), 0);
    EXPECT_EQ(memory->InternalCopyBlt(0, 0, *device, rect), 1);

    device->Destroy();
    const Reference<OpenDevice> other(new OpenDevice(4, 4));
    EXPECT_EQ(device->LockData(), nullptr);
    EXPECT_EQ(device->GetDC(), nullptr);
    EXPECT_EQ(device->InternalFillColor(rect, 0), 0);
    for (const auto& [to, from] : {std::pair{device.get(), other.get()}, {other.get(), device.get()}}) {
        EXPECT_EQ(to->InternalCopyBlt(0, 0, *from, rect), 0);
        EXPECT_EQ(to->InternalTransparentBlt(0, 0, *from, 0, rect), 0);
        EXPECT_EQ(to->InternalStretchBlt(rect, *from, rect, nullptr), 0);
    }
}

TEST_F(DeviceSurfaces, BelowTwentyFourBitsTheKeyCopyIsMemorys) {
    Start(16);
    const Reference<OpenDevice> target(new OpenDevice(2, 1));
    const Reference<OpenMemory> source(new OpenMemory(2, 1));
    SetPixels(*source, {0x00102030, 0xFF405060});
    SetPixels(*target, {1, 1});
    EXPECT_EQ(target->InternalTransparentBlt(0, 0, *source, RGB(0x10, 0x20, 0x30), CRect(0, 0, 2, 1)), 1);
    EXPECT_EQ(PixelsOf(*target), (Words{1, 0x00405060}));
}

TEST_F(DeviceSurfaces, WhatWasLostComesBackWithTheNextUse) {
    const Reference<OpenDevice> target(new OpenDevice(4, 4)), source(new OpenDevice(4, 4));
    CRect rect(0, 0, 4, 4);
    LoseDeviceSurfaces();
    EXPECT_EQ(target->InternalFillColor(rect, 0x00010203), 1);
    EXPECT_EQ(PixelsOf(*target)[15] & 0xFFFFFF, 0x00030201u);
    LoseDeviceSurfaces();
    EXPECT_EQ(target->InternalCopyBlt(0, 0, *source, rect), 1);
    LoseDeviceSurfaces();
    EXPECT_EQ(target->InternalTransparentBlt(0, 0, *source, 0, rect), 1);
    LoseDeviceSurfaces();
    EXPECT_EQ(target->InternalStretchBlt(rect, *source, rect, nullptr), 1);
    LoseDeviceSurfaces();
    EXPECT_EQ(target->GetDC(), nullptr);   // a context doesn't look
    const rastel::PixelLock pixels(*target);
    EXPECT_TRUE(pixels);
}

TEST_F(DeviceSurfaces, RefusalsAreZeroAndNothingStaysLocked) {
    const Reference<OpenDevice> target(new OpenDevice(4, 4)), source(new OpenDevice(4, 4));
    CRect rect(0, 0, 4, 4);
    FailDeviceCalls("Blt", 3);
    EXPECT_EQ(target->InternalFillColor(rect, 0), 0);
    EXPECT_EQ(target->InternalCopyBlt(0, 0, *source, rect), 0);
    EXPECT_EQ(target->InternalTransparentBlt(0, 0, *source, 0, rect), 0);
    FailDeviceCalls("Lock", 1);
    EXPECT_EQ(target->LockData(), nullptr);
    FailDeviceCalls("GetDC", 1);
    EXPECT_EQ(target->GetDC(), nullptr);
    EXPECT_NE(target->LockData(), nullptr);
    target->UnlockData();
    target->UnlockData();   // once too often
    const HDC dc = target->GetDC();
    EXPECT_NE(dc, nullptr);
    ::SetPixelV(dc, 3, 3, RGB(1, 2, 3));
    target->ReleaseDC(dc);
    EXPECT_EQ(PixelsOf(*target)[15], 0x00010203u);
}

}   // namespace

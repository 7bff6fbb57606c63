// One display: its size, depth, windows and pixels. GDI draws through it; nothing above the platform layer sees it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "rastel/platform/portable/gdi/pixel_buffer.h"
#include "rastel/platform/portable/gdi/region.h"
#include "rastel/platform/portable/types.h"

namespace rastel::platform {

struct DisplayMode {
    int width = 0;
    int height = 0;
    int bitsPerPixel = 0;   // as told to hosts: 8, 15, 16, 24 or 32
    int refreshHz = 0;      // 0 where the display does not say
};

// Write: every pixel of the area will be written, old ones need not be fetched.
enum class Access { Read, Write, ReadWrite };

// What a display offers to the accelerated interfaces above it.
struct DeviceTraits {
    bool directDraw = true;
    bool direct3D = true;
    int pitchPadding = 0;   // extra bytes behind each row of a device surface
};

class DisplayDevice {
public:
    virtual ~DisplayDevice() = default;

    virtual std::wstring Kind() const = 0;   // "x11" or "memory"
    virtual std::wstring Name() const = 0;   // of this screen, as hosts show it; may hold any character
    virtual DisplayMode Mode() const = 0;
    virtual PixelFormat Format() const = 0;
    virtual DeviceTraits Traits() const { return {}; }
    virtual std::vector<DisplayMode> Modes() const = 0;
    virtual bool SetMode(const DisplayMode& mode) = 0;   // refreshHz 0: any
    virtual bool RestoreMode() = 0;

    // Windows. A null window is the whole screen. False: no such window (any more).
    virtual bool ClientArea(HWND window, RECT* onScreen) const = 0;
    virtual bool VisibleArea(HWND window, Region* onScreen) const = 0;   // what other windows leave of it
    virtual bool WindowArea(HWND window, RECT* onScreen) const { return ClientArea(window, onScreen); }   // and borders
    virtual HWND DesktopWindow() const { return nullptr; }

    // Direct access to the pixels of `area`, in the client co-ordinates of the window and inside it. On success
    // `pixels` is a view of exactly that area, valid until EndAccess, which the same thread must call; one access at
    // a time: a second thread waits, a second access by the same thread fails. False: nothing to end.
    // What other windows hide reads as anything, what is off the screen as 0; writing to either does nothing.
    virtual bool BeginAccess(HWND window, const RECT& area, Access access, PixelBuffer* pixels) = 0;
    virtual void EndAccess() = 0;

    // How many bytes a writing access is best made of; 0: any number. A display that shows one piece while the next is
    // being written likes them small.
    virtual std::int64_t BandBytes() const { return 0; }

    // The display's colour table: 256 entries on 8-bit indexed displays, none otherwise. The fixed entries, the
    // first and the last ten, can't be changed.
    virtual std::vector<RGBQUAD> SystemPalette() const = 0;
    virtual bool SetSystemPalette(int first, const std::vector<RGBQUAD>& colors) = 0;

    virtual void WaitForBlank() = 0;

    // Returns when everything drawn so far is where another program would see it.
    virtual void Flush() {}
};

// The process's display: X11 where a server answers, memory otherwise; found at first use. Never null.
std::shared_ptr<DisplayDevice> Display();
void ReplaceDisplay(std::shared_ptr<DisplayDevice> display);   // for tests and headless hosts

// How often the named call still has to fail on request; consumes one when it does.
bool ShouldFail(const char* call);

}   // namespace rastel::platform

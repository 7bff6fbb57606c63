// A display whose screen is a block of memory.
#pragma once

#include <array>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "rastel/platform/portable/gdi/pixel_memory.h"
#include "rastel/platform/portable/memory_display.h"
#include "rastel/platform/portable/screen/access_turn.h"
#include "rastel/platform/portable/screen/display_device.h"

namespace rastel::platform {

class MemoryDisplay : public DisplayDevice {
public:
    // Senseless options fall back on the usual ones, each for itself.
    explicit MemoryDisplay(const MemoryDisplayOptions& options);

    std::wstring Kind() const override { return L"memory"; }
    std::wstring Name() const override { return options_.name; }
    DisplayMode Mode() const override;
    PixelFormat Format() const override;
    DeviceTraits Traits() const override;
    std::vector<DisplayMode> Modes() const override;
    bool SetMode(const DisplayMode& mode) override;
    bool RestoreMode() override;

    bool ClientArea(HWND window, RECT* onScreen) const override;
    bool VisibleArea(HWND window, Region* onScreen) const override;
    HWND DesktopWindow() const override;

    bool BeginAccess(HWND window, const RECT& area, Access access, PixelBuffer* pixels) override;
    void EndAccess() override;

    std::vector<RGBQUAD> SystemPalette() const override;
    bool SetSystemPalette(int first, const std::vector<RGBQUAD>& colors) override;
    void WaitForBlank() override;

    HWND MakeWindow(const RECT& clientOnScreen);
    void MoveWindow(HWND window, const RECT& clientOnScreen);
    void EndWindow(HWND window);
    ScreenView View() const;
    COLORREF Pixel(int x, int y) const;

private:
    struct Window {
        HWND handle;
        RECT client;
    };
    // An access to pixels that are not all visible goes through a copy.
    struct Detour {
        Detour() {}   // clang wants it spelt out inside a class that is not complete yet
        std::vector<unsigned char> bits;
        Region visible;   // on the screen
        POINT origin{};   // of the copy, on the screen
        int pitch = 0;
        bool writesBack = false;
    };

    bool Enter(const DisplayMode& mode);
    bool EnterFirst();
    RECT ScreenRect() const { return {0, 0, mode_.width, mode_.height}; }
    std::vector<Window>::const_iterator FindWindow(HWND window) const;
    bool ClientAreaLocked(HWND window, RECT* onScreen) const;
    Region VisibleAreaLocked(HWND window, const RECT& client) const;
    PixelBuffer ScreenPixels() const;
    void StartDetour(const RECT& onScreen, const Region& visible, Access access, PixelBuffer* pixels);

    MemoryDisplayOptions options_;
    PixelFormat firstFormat_;
    mutable std::mutex mutex_;
    AccessTurn turn_;
    DisplayMode mode_;
    PixelFormat format_;
    PixelMemory memory_;
    int pitch_ = 0;
    std::array<RGBQUAD, 256> palette_{};
    std::array<RGBQUAD, 256> accessPalette_{};
    std::vector<Window> windows_;   // from the lowest to the highest
    std::optional<Detour> detour_;
};

}   // namespace rastel::platform

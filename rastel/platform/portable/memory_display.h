// A display in memory, for tests and for hosts without a screen, and the switches that make it misbehave.
//
// Not for use from two threads at once. Bits follow the display's format; rows run top-down.
#pragma once

#include <string>
#include <vector>

#include "rastel/platform/portable/types.h"

namespace rastel::platform {

struct MemoryDisplayOptions {
    int width = 1024, height = 768, bitsPerPixel = 32;
    DWORD redMask = 0, greenMask = 0, blueMask = 0;   // 0: the usual masks of the depth (16 bits: 5-6-5)
    int refreshHz = 60;
    std::wstring name = L"Memory display";
    bool directDraw = true, direct3D = true;   // false: as on a machine that has none
    int pitchPadding = 0;                      // extra bytes behind each row of device surfaces and of the screen
    struct Mode {
        int width, height, bitsPerPixel;
    };
    std::vector<Mode> modes;   // empty: a usual list
};

RASTEL_API void UseMemoryDisplay(
    const MemoryDisplayOptions& options);                         // replaces the display; no manager may be alive
RASTEL_API HWND CreateMemoryWindow(const RECT& clientOnScreen);   // a window whose client area lies there
RASTEL_API void MoveMemoryWindow(HWND window, const RECT& clientOnScreen);
RASTEL_API void DestroyMemoryWindow(HWND window);

struct ScreenView {
    unsigned char* bits;
    int width, height, pitch, bitsPerPixel;
};
RASTEL_API ScreenView MemoryScreen();                  // the frame buffer, in the display's own format; null bits: none
RASTEL_API COLORREF MemoryScreenPixel(int x, int y);   // one pixel of it, widened to 8 bits a channel

RASTEL_API void LoseDeviceSurfaces();   // every device surface, in system memory too, is lost until it is restored
RASTEL_API void FailDeviceCalls(const char* call,
                                int count);   // the next `count` calls of that name fail plainly; 0 clears
RASTEL_API void SetRegistryRoot(const std::wstring& folder);                   // where the registry keeps its files
RASTEL_API void SetWindowsVersion(DWORD platform, DWORD major, DWORD minor);   // what GetVersionExW reports
RASTEL_API void HideModule(const std::wstring& name, bool hidden);   // as if that library were not on the machine

}   // namespace rastel::platform

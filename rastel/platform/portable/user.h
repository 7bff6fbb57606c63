// The window system's functions that the library and its hosts use, on our own displays.
#pragma once

#include "rastel/platform/portable/types.h"

#define SM_CXSCREEN 0
#define SM_CYSCREEN 1

// Where a text goes in its rectangle.
#define DT_TOP 0
#define DT_LEFT 0
#define DT_CENTER 1
#define DT_RIGHT 2
#define DT_VCENTER 4
#define DT_BOTTOM 8

#define ENUM_CURRENT_SETTINGS (static_cast<DWORD>(-1))
#define ENUM_REGISTRY_SETTINGS (static_cast<DWORD>(-2))

#define CCHDEVICENAME 32
#define CCHFORMNAME 32

#define DM_BITSPERPEL 0x00040000
#define DM_PELSWIDTH 0x00080000
#define DM_PELSHEIGHT 0x00100000
#define DM_DISPLAYFREQUENCY 0x00400000

struct POINTL {
    LONG x;
    LONG y;
};

struct DEVMODEW {
    WCHAR dmDeviceName[CCHDEVICENAME];
    WORD dmSpecVersion;
    WORD dmDriverVersion;
    WORD dmSize;
    WORD dmDriverExtra;
    DWORD dmFields;
    __extension__ union {
        __extension__ struct {
            SHORT dmOrientation;
            SHORT dmPaperSize;
            SHORT dmPaperLength;
            SHORT dmPaperWidth;
            SHORT dmScale;
            SHORT dmCopies;
            SHORT dmDefaultSource;
            SHORT dmPrintQuality;
        };
        __extension__ struct {
            POINTL dmPosition;
            DWORD dmDisplayOrientation;
            DWORD dmDisplayFixedOutput;
        };
    };
    SHORT dmColor;
    SHORT dmDuplex;
    SHORT dmYResolution;
    SHORT dmTTOption;
    SHORT dmCollate;
    WCHAR dmFormName[CCHFORMNAME];
    WORD dmLogPixels;
    DWORD dmBitsPerPel;
    DWORD dmPelsWidth;
    DWORD dmPelsHeight;
    DWORD dmDisplayFlags;
    DWORD dmDisplayFrequency;
    DWORD dmICMMethod;
    DWORD dmICMIntent;
    DWORD dmMediaType;
    DWORD dmDitherType;
    DWORD dmReserved1;
    DWORD dmReserved2;
    DWORD dmPanningWidth;
    DWORD dmPanningHeight;
};

// Rectangle arithmetic; it touches no device. Left and top are inside, right and bottom outside.
RASTEL_API BOOL IntersectRect(LPRECT result, const RECT* first, const RECT* second);
RASTEL_API BOOL UnionRect(LPRECT result, const RECT* first, const RECT* second);
RASTEL_API BOOL SubtractRect(LPRECT result, const RECT* first, const RECT* second);
RASTEL_API BOOL EqualRect(const RECT* first, const RECT* second);
RASTEL_API BOOL IsRectEmpty(const RECT* rect);
RASTEL_API BOOL SetRect(LPRECT rect, int left, int top, int right, int bottom);
RASTEL_API BOOL SetRectEmpty(LPRECT rect);
RASTEL_API BOOL CopyRect(LPRECT target, const RECT* source);
RASTEL_API BOOL OffsetRect(LPRECT rect, int dx, int dy);
RASTEL_API BOOL InflateRect(LPRECT rect, int dx, int dy);
RASTEL_API BOOL PtInRect(const RECT* rect, POINT point);

RASTEL_API int GetSystemMetrics(int index);
RASTEL_API BOOL EnumDisplaySettingsW(LPCWSTR deviceName, DWORD modeIndex, DEVMODEW* mode);

RASTEL_API HWND GetDesktopWindow();
RASTEL_API BOOL IsWindow(HWND window);
RASTEL_API BOOL GetClientRect(HWND window, LPRECT rect);
RASTEL_API BOOL GetWindowRect(HWND window, LPRECT rect);
RASTEL_API BOOL ClientToScreen(HWND window, LPPOINT point);
RASTEL_API BOOL ScreenToClient(HWND window, LPPOINT point);
RASTEL_API HDC GetDC(HWND window);
RASTEL_API int ReleaseDC(HWND window, HDC context);
RASTEL_API int FillRect(HDC context, const RECT* rect, HBRUSH brush);
RASTEL_API int FrameRect(HDC context, const RECT* rect, HBRUSH brush);

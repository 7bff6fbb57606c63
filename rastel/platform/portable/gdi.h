// GDI on our own rasters: the names, constants and signatures of the Windows API.
//
// A context draws on a bitmap, on a window or on the screen. On a 32-bit bitmap FillRect, SetPixelV, lines and text
// write an alpha byte of 0, and BitBlt moves all four bytes. A stretch picks pixels (only HALFTONE averages).
// Handles are checked: a stale or foreign one makes the call fail, it is never followed.
#pragma once

#include "rastel/platform/portable/user.h"

#define BI_RGB 0
#define BI_BITFIELDS 3
#define DIB_RGB_COLORS 0
#define DIB_PAL_COLORS 1

#define SRCCOPY 0x00CC0020u
#define SRCPAINT 0x00EE0086u
#define SRCAND 0x008800C6u
#define SRCINVERT 0x00660046u
#define SRCERASE 0x00440328u
#define NOTSRCCOPY 0x00330008u
#define NOTSRCERASE 0x001100A6u
#define MERGECOPY 0x00C000CAu
#define MERGEPAINT 0x00BB0226u
#define PATCOPY 0x00F00021u
#define PATPAINT 0x00FB0A09u
#define PATINVERT 0x005A0049u
#define DSTINVERT 0x00550009u
#define BLACKNESS 0x00000042u
#define WHITENESS 0x00FF0062u
#define NOMIRRORBITMAP 0x80000000u
#define CAPTUREBLT 0x40000000u

#define BLACKONWHITE 1
#define WHITEONBLACK 2
#define COLORONCOLOR 3
#define HALFTONE 4

#define R2_BLACK 1
#define R2_NOTMERGEPEN 2
#define R2_MASKNOTPEN 3
#define R2_NOTCOPYPEN 4
#define R2_MASKPENNOT 5
#define R2_NOT 6
#define R2_XORPEN 7
#define R2_NOTMASKPEN 8
#define R2_MASKPEN 9
#define R2_NOTXORPEN 10
#define R2_NOP 11
#define R2_MERGENOTPEN 12
#define R2_COPYPEN 13
#define R2_MERGEPENNOT 14
#define R2_MERGEPEN 15
#define R2_WHITE 16

#define RGN_ERROR 0
#define NULLREGION 1
#define SIMPLEREGION 2
#define COMPLEXREGION 3
#define RGN_AND 1
#define RGN_OR 2
#define RGN_XOR 3
#define RGN_DIFF 4
#define RGN_COPY 5
#define RDH_RECTANGLES 1

#define TECHNOLOGY 2
#define DT_RASDISPLAY 1
#define HORZSIZE 4
#define VERTSIZE 6
#define HORZRES 8
#define VERTRES 10
#define BITSPIXEL 12
#define PLANES 14
#define NUMCOLORS 24
#define RASTERCAPS 38
#define LOGPIXELSX 88
#define LOGPIXELSY 90
#define SIZEPALETTE 104
#define NUMRESERVED 106
#define COLORRES 108
#define VREFRESH 116
#define RC_BITBLT 0x0001
#define RC_PALETTE 0x0100
#define RC_STRETCHBLT 0x0800
#define RC_STRETCHDIB 0x2000

#define TRANSPARENT 1
#define OPAQUE 2

#define TA_NOUPDATECP 0
#define TA_UPDATECP 1
#define TA_LEFT 0
#define TA_RIGHT 2
#define TA_CENTER 6
#define TA_TOP 0
#define TA_BOTTOM 8
#define TA_BASELINE 24

#define LF_FACESIZE 32
#define FW_DONTCARE 0
#define FW_LIGHT 300
#define FW_NORMAL 400
#define FW_SEMIBOLD 600
#define FW_BOLD 700
#define ANSI_CHARSET 0
#define DEFAULT_CHARSET 1
#define OUT_DEFAULT_PRECIS 0
#define CLIP_DEFAULT_PRECIS 0
#define DEFAULT_QUALITY 0
#define NONANTIALIASED_QUALITY 3
#define ANTIALIASED_QUALITY 4
#define CLEARTYPE_QUALITY 5
#define DEFAULT_PITCH 0
#define FIXED_PITCH 1
#define VARIABLE_PITCH 2
#define FF_DONTCARE 0x00
#define FF_ROMAN 0x10
#define FF_SWISS 0x20
#define FF_MODERN 0x30
#define TMPF_FIXED_PITCH 0x01
#define TMPF_VECTOR 0x02
#define TMPF_TRUETYPE 0x04

#define GGO_METRICS 0
#define GGO_BITMAP 1
#define GGO_NATIVE 2
#define GGO_BEZIER 3
#define GGO_GRAY2_BITMAP 4
#define GGO_GRAY4_BITMAP 5
#define GGO_GRAY8_BITMAP 6
#define GGO_GLYPH_INDEX 0x0080
#define GGO_UNHINTED 0x0100

#define PS_SOLID 0
#define PS_DASH 1
#define PS_DOT 2
#define PS_DASHDOT 3
#define PS_DASHDOTDOT 4
#define PS_NULL 5
#define PS_INSIDEFRAME 6

#define BS_SOLID 0
#define BS_NULL 1
#define BS_HOLLOW BS_NULL
#define BS_PATTERN 3

#define WHITE_BRUSH 0
#define LTGRAY_BRUSH 1
#define GRAY_BRUSH 2
#define DKGRAY_BRUSH 3
#define BLACK_BRUSH 4
#define NULL_BRUSH 5
#define HOLLOW_BRUSH NULL_BRUSH
#define WHITE_PEN 6
#define BLACK_PEN 7
#define NULL_PEN 8
#define SYSTEM_FONT 13
#define DEFAULT_PALETTE 15
#define DEFAULT_GUI_FONT 17

#define OBJ_PEN 1
#define OBJ_BRUSH 2
#define OBJ_DC 3
#define OBJ_PAL 5
#define OBJ_FONT 6
#define OBJ_BITMAP 7
#define OBJ_REGION 8
#define OBJ_MEMDC 10

#define PC_RESERVED 0x01
#define PC_EXPLICIT 0x02
#define PC_NOCOLLAPSE 0x04

#define CLR_INVALID 0xFFFFFFFFu
#define GDI_ERROR 0xFFFFFFFFu
#define HGDI_ERROR (reinterpret_cast<HGDIOBJ>(static_cast<LONG_PTR>(-1)))

#define RGB(red, green, blue)                                                                            \
    (static_cast<COLORREF>(static_cast<BYTE>(red) | (static_cast<WORD>(static_cast<BYTE>(green)) << 8) | \
                           (static_cast<DWORD>(static_cast<BYTE>(blue)) << 16)))
#define GetRValue(color) (static_cast<BYTE>((color)&0xFF))
#define GetGValue(color) (static_cast<BYTE>(((color) >> 8) & 0xFF))
#define GetBValue(color) (static_cast<BYTE>(((color) >> 16) & 0xFF))

struct PALETTEENTRY {
    BYTE peRed;
    BYTE peGreen;
    BYTE peBlue;
    BYTE peFlags;
};
using LPPALETTEENTRY = PALETTEENTRY*;

struct LOGPALETTE {
    WORD palVersion;
    WORD palNumEntries;
    PALETTEENTRY palPalEntry[1];
};

struct LOGPEN {
    UINT lopnStyle;
    POINT lopnWidth;
    COLORREF lopnColor;
};

struct LOGBRUSH {
    UINT lbStyle;
    COLORREF lbColor;
    ULONG_PTR lbHatch;
};

struct LOGFONTW {
    LONG lfHeight;
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    WCHAR lfFaceName[LF_FACESIZE];
};

struct TEXTMETRICW {
    LONG tmHeight;
    LONG tmAscent;
    LONG tmDescent;
    LONG tmInternalLeading;
    LONG tmExternalLeading;
    LONG tmAveCharWidth;
    LONG tmMaxCharWidth;
    LONG tmWeight;
    LONG tmOverhang;
    LONG tmDigitizedAspectX;
    LONG tmDigitizedAspectY;
    WCHAR tmFirstChar;
    WCHAR tmLastChar;
    WCHAR tmDefaultChar;
    WCHAR tmBreakChar;
    BYTE tmItalic;
    BYTE tmUnderlined;
    BYTE tmStruckOut;
    BYTE tmPitchAndFamily;
    BYTE tmCharSet;
};
using LPTEXTMETRICW = TEXTMETRICW*;

struct PANOSE {
    BYTE bFamilyType;
    BYTE bSerifStyle;
    BYTE bWeight;
    BYTE bProportion;
    BYTE bContrast;
    BYTE bStrokeVariation;
    BYTE bArmStyle;
    BYTE bLetterform;
    BYTE bMidline;
    BYTE bXHeight;
};

struct OUTLINETEXTMETRICW {
    UINT otmSize;
    TEXTMETRICW otmTextMetrics;
    BYTE otmFiller;
    PANOSE otmPanoseNumber;
    UINT otmfsSelection;
    UINT otmfsType;
    int otmsCharSlopeRise;
    int otmsCharSlopeRun;
    int otmItalicAngle;
    UINT otmEMSquare;
    int otmAscent;
    int otmDescent;
    UINT otmLineGap;
    UINT otmsCapEmHeight;
    UINT otmsXHeight;
    RECT otmrcFontBox;
    int otmMacAscent;
    int otmMacDescent;
    UINT otmMacLineGap;
    UINT otmusMinimumPPEM;
    POINT otmptSubscriptSize;
    POINT otmptSubscriptOffset;
    POINT otmptSuperscriptSize;
    POINT otmptSuperscriptOffset;
    UINT otmsStrikeoutSize;
    int otmsStrikeoutPosition;
    int otmsUnderscoreSize;
    int otmsUnderscorePosition;
    char* otmpFamilyName;   // these four hold offsets from the start of the structure
    char* otmpFaceName;
    char* otmpStyleName;
    char* otmpFullName;
};
using LPOUTLINETEXTMETRICW = OUTLINETEXTMETRICW*;

// 16.16 with the halves apart.
struct FIXED {
    WORD fract;
    short value;
};

struct MAT2 {
    FIXED eM11;
    FIXED eM12;
    FIXED eM21;
    FIXED eM22;
};

struct GLYPHMETRICS {
    UINT gmBlackBoxX;
    UINT gmBlackBoxY;
    POINT gmptGlyphOrigin;
    short gmCellIncX;
    short gmCellIncY;
};
using LPGLYPHMETRICS = GLYPHMETRICS*;

static_assert(sizeof(PANOSE) == 10 && sizeof(FIXED) == 4 && sizeof(MAT2) == 16 && sizeof(GLYPHMETRICS) == 20);

struct RGNDATAHEADER {
    DWORD dwSize;
    DWORD iType;
    DWORD nCount;
    DWORD nRgnSize;
    RECT rcBound;
};
struct RGNDATA {
    RGNDATAHEADER rdh;
    char Buffer[1];
};
using LPRGNDATA = RGNDATA*;

// Contexts.
RASTEL_API HDC CreateDCW(LPCWSTR driver, LPCWSTR device, LPCWSTR port, const DEVMODEW* mode);
RASTEL_API HDC CreateCompatibleDC(HDC context);
RASTEL_API BOOL DeleteDC(HDC context);
RASTEL_API int SaveDC(HDC context);
RASTEL_API BOOL RestoreDC(HDC context, int saved);
RASTEL_API int GetDeviceCaps(HDC context, int index);
RASTEL_API BOOL SetViewportOrgEx(HDC context, int x, int y, LPPOINT previous);
RASTEL_API BOOL GetViewportOrgEx(HDC context, LPPOINT origin);
RASTEL_API BOOL OffsetViewportOrgEx(HDC context, int dx, int dy, LPPOINT previous);
RASTEL_API BOOL GdiFlush();

// Objects.
RASTEL_API HGDIOBJ SelectObject(HDC context, HGDIOBJ object);
RASTEL_API BOOL DeleteObject(HGDIOBJ object);
RASTEL_API HGDIOBJ GetStockObject(int index);
RASTEL_API HGDIOBJ GetCurrentObject(HDC context, UINT type);
RASTEL_API DWORD GetObjectType(HGDIOBJ object);
RASTEL_API int GetObjectW(HGDIOBJ object, int bytes, LPVOID target);

// Bitmaps. The pixels of a new bitmap are all zero.
RASTEL_API HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits);
RASTEL_API HBITMAP CreateCompatibleBitmap(HDC context, int width, int height);
RASTEL_API HBITMAP CreateDIBSection(HDC context, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section,
                                    DWORD offset);
RASTEL_API int GetDIBits(HDC context, HBITMAP bitmap, UINT firstRow, UINT rows, LPVOID bits, LPBITMAPINFO info,
                         UINT usage);
RASTEL_API int SetDIBits(HDC context, HBITMAP bitmap, UINT firstRow, UINT rows, const void* bits,
                         const BITMAPINFO* info, UINT usage);
RASTEL_API UINT SetDIBColorTable(HDC context, UINT first, UINT count, const RGBQUAD* colors);
RASTEL_API UINT GetDIBColorTable(HDC context, UINT first, UINT count, RGBQUAD* colors);

// Blits.
RASTEL_API BOOL BitBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                       DWORD operation);
RASTEL_API BOOL StretchBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                           int sourceWidth, int sourceHeight, DWORD operation);
RASTEL_API int StretchDIBits(HDC target, int x, int y, int width, int height, int sourceX, int sourceY, int sourceWidth,
                             int sourceHeight, const void* bits, const BITMAPINFO* info, UINT usage, DWORD operation);
RASTEL_API int SetDIBitsToDevice(HDC target, int x, int y, DWORD width, DWORD height, int sourceX, int sourceY,
                                 UINT firstRow, UINT rows, const void* bits, const BITMAPINFO* info, UINT usage);
RASTEL_API BOOL PatBlt(HDC target, int x, int y, int width, int height, DWORD operation);
RASTEL_API int SetStretchBltMode(HDC context, int mode);
RASTEL_API int GetStretchBltMode(HDC context);

// Drawing.
RASTEL_API HBRUSH CreateSolidBrush(COLORREF color);
RASTEL_API HBRUSH CreatePatternBrush(HBITMAP bitmap);
RASTEL_API HPEN CreatePen(int style, int width, COLORREF color);
RASTEL_API BOOL MoveToEx(HDC context, int x, int y, LPPOINT previous);
RASTEL_API BOOL GetCurrentPositionEx(HDC context, LPPOINT position);
RASTEL_API BOOL LineTo(HDC context, int x, int y);
RASTEL_API BOOL Polyline(HDC context, const POINT* points, int count);
RASTEL_API BOOL Rectangle(HDC context, int left, int top, int right, int bottom);
RASTEL_API COLORREF GetPixel(HDC context, int x, int y);
RASTEL_API COLORREF SetPixel(HDC context, int x, int y, COLORREF color);
RASTEL_API BOOL SetPixelV(HDC context, int x, int y, COLORREF color);
RASTEL_API int SetROP2(HDC context, int operation);
RASTEL_API int GetROP2(HDC context);
RASTEL_API int SetBkMode(HDC context, int mode);
RASTEL_API int GetBkMode(HDC context);
RASTEL_API COLORREF SetBkColor(HDC context, COLORREF color);
RASTEL_API COLORREF GetBkColor(HDC context);
RASTEL_API COLORREF SetTextColor(HDC context, COLORREF color);
RASTEL_API COLORREF GetTextColor(HDC context);

// Regions and clips.
RASTEL_API HRGN CreateRectRgn(int left, int top, int right, int bottom);
RASTEL_API HRGN CreateRectRgnIndirect(const RECT* rect);
RASTEL_API int CombineRgn(HRGN target, HRGN first, HRGN second, int mode);
RASTEL_API int GetRgnBox(HRGN region, LPRECT box);
RASTEL_API DWORD GetRegionData(HRGN region, DWORD bytes, LPRGNDATA data);
RASTEL_API BOOL SetRectRgn(HRGN region, int left, int top, int right, int bottom);
RASTEL_API int OffsetRgn(HRGN region, int dx, int dy);
RASTEL_API int SelectClipRgn(HDC context, HRGN region);
RASTEL_API int IntersectClipRect(HDC context, int left, int top, int right, int bottom);
RASTEL_API int ExcludeClipRect(HDC context, int left, int top, int right, int bottom);
RASTEL_API int GetClipRgn(HDC context, HRGN region);
RASTEL_API BOOL RectVisible(HDC context, const RECT* rect);
RASTEL_API int GetClipBox(HDC context, LPRECT box);
RASTEL_API int SetMetaRgn(HDC context);

// Palettes.
RASTEL_API HPALETTE CreatePalette(const LOGPALETTE* palette);
RASTEL_API HPALETTE SelectPalette(HDC context, HPALETTE palette, BOOL background);
RASTEL_API UINT RealizePalette(HDC context);
RASTEL_API UINT GetPaletteEntries(HPALETTE palette, UINT first, UINT count, LPPALETTEENTRY entries);
RASTEL_API UINT GetSystemPaletteEntries(HDC context, UINT first, UINT count, LPPALETTEENTRY entries);
RASTEL_API UINT GetNearestPaletteIndex(HPALETTE palette, COLORREF color);
RASTEL_API COLORREF GetNearestColor(HDC context, COLORREF color);

// Text.
RASTEL_API HFONT CreateFontW(int height, int width, int escapement, int orientation, int weight, DWORD italic,
                             DWORD underline, DWORD strikeOut, DWORD charSet, DWORD outPrecision, DWORD clipPrecision,
                             DWORD quality, DWORD pitchAndFamily, LPCWSTR faceName);
RASTEL_API HFONT CreateFontIndirectW(const LOGFONTW* font);
RASTEL_API BOOL TextOutW(HDC context, int x, int y, LPCWSTR text, int length);
RASTEL_API UINT SetTextAlign(HDC context, UINT align);
RASTEL_API UINT GetTextAlign(HDC context);
RASTEL_API BOOL GetTextMetricsW(HDC context, LPTEXTMETRICW metrics);
RASTEL_API BOOL GetTextExtentPoint32W(HDC context, LPCWSTR text, int length, LPSIZE size);

// `extents`, if given, takes the extent of every beginning of the text; both units of a surrogate pair have that of the
// pair. `fit`, if given, takes how many of them stay within `limit`, and only those are written.
RASTEL_API BOOL GetTextExtentExPointW(HDC context, LPCWSTR text, int length, int limit, LPINT fit, LPINT extents,
                                      LPSIZE size);

// Copies as much of the structure and of the names behind it as `bytes` allow. Null: the size of both together.
RASTEL_API UINT GetOutlineTextMetricsW(HDC context, UINT bytes, LPOUTLINETEXTMETRICW metrics);

// GGO_METRICS, GGO_BITMAP and the three grey formats, with the identity matrix; else GDI_ERROR. Characters above 0xFFFF
// are taken as they are. Rows are padded to four bytes, and the box is the smallest round the ink. Without a buffer:
// the bytes it needs. The font's quality plays no part: grey formats are smooth, GGO_BITMAP is not.
RASTEL_API DWORD GetGlyphOutlineW(HDC context, UINT character, UINT format, LPGLYPHMETRICS metrics, DWORD bytes,
                                  LPVOID buffer, const MAT2* matrix);

// The plain values of GDI+: statuses, modes, pixel formats, points, rectangles, colours.
//
// Pixel formats are macros, as a host that builds on Windows too can't qualify them there.
#pragma once

#include "rastel/platform/portable/gdi.h"

#define PixelFormatUndefined 0
#define PixelFormat8bppIndexed 0x00030803
#define PixelFormat24bppRGB 0x00021808
#define PixelFormat32bppRGB 0x00022009
#define PixelFormat32bppARGB 0x0026200A
#define PixelFormat32bppPARGB 0x000E200B

namespace Gdiplus {

using REAL = float;
using ARGB = DWORD;   // 0xAARRGGBB, straight
using PixelFormat = INT;

enum Status {
    Ok = 0,
    GenericError = 1,
    InvalidParameter = 2,
    OutOfMemory = 3,
    ObjectBusy = 4,
    InsufficientBuffer = 5,
    NotImplemented = 6,
    Win32Error = 7,
    WrongState = 8,
    Aborted = 9,
    FileNotFound = 10,
    ValueOverflow = 11,
    AccessDenied = 12,
    UnknownImageFormat = 13,
    FontFamilyNotFound = 14,
    FontStyleNotFound = 15,
    NotTrueTypeFont = 16,
    UnsupportedGdiplusVersion = 17,
    GdiplusNotInitialized = 18,
    PropertyNotFound = 19,
    PropertyNotSupported = 20
};

enum ImageLockMode { ImageLockModeRead = 1, ImageLockModeWrite = 2, ImageLockModeUserInputBuf = 4 };
enum ImageType { ImageTypeUnknown = 0, ImageTypeBitmap = 1, ImageTypeMetafile = 2 };
enum CombineMode {
    CombineModeReplace = 0,
    CombineModeIntersect = 1,
    CombineModeUnion = 2,
    CombineModeXor = 3,
    CombineModeExclude = 4,
    CombineModeComplement = 5
};
enum MatrixOrder { MatrixOrderPrepend = 0, MatrixOrderAppend = 1 };
enum FillMode { FillModeAlternate = 0, FillModeWinding = 1 };
enum WrapMode {
    WrapModeTile = 0,
    WrapModeTileFlipX = 1,
    WrapModeTileFlipY = 2,
    WrapModeTileFlipXY = 3,
    WrapModeClamp = 4
};
enum LinearGradientMode {
    LinearGradientModeHorizontal = 0,
    LinearGradientModeVertical = 1,
    LinearGradientModeForwardDiagonal = 2,
    LinearGradientModeBackwardDiagonal = 3
};
enum SmoothingMode {
    SmoothingModeInvalid = -1,
    SmoothingModeDefault = 0,
    SmoothingModeHighSpeed = 1,
    SmoothingModeHighQuality = 2,
    SmoothingModeNone = 3,
    SmoothingModeAntiAlias = 4
};
enum PixelOffsetMode {
    PixelOffsetModeInvalid = -1,
    PixelOffsetModeDefault = 0,
    PixelOffsetModeHighSpeed = 1,
    PixelOffsetModeHighQuality = 2,
    PixelOffsetModeNone = 3,
    PixelOffsetModeHalf = 4
};
enum CompositingMode { CompositingModeSourceOver = 0, CompositingModeSourceCopy = 1 };
enum InterpolationMode {
    InterpolationModeInvalid = -1,
    InterpolationModeDefault = 0,
    InterpolationModeLowQuality = 1,
    InterpolationModeHighQuality = 2,
    InterpolationModeBilinear = 3,
    InterpolationModeBicubic = 4,
    InterpolationModeNearestNeighbor = 5,
    InterpolationModeHighQualityBilinear = 6,
    InterpolationModeHighQualityBicubic = 7
};
enum TextRenderingHint {
    TextRenderingHintSystemDefault = 0,
    TextRenderingHintSingleBitPerPixelGridFit = 1,
    TextRenderingHintSingleBitPerPixel = 2,
    TextRenderingHintAntiAliasGridFit = 3,
    TextRenderingHintAntiAlias = 4,
    TextRenderingHintClearTypeGridFit = 5
};
enum FlushIntention { FlushIntentionFlush = 0, FlushIntentionSync = 1 };
enum LineCap { LineCapFlat = 0, LineCapSquare = 1, LineCapRound = 2 };
enum LineJoin { LineJoinMiter = 0, LineJoinBevel = 1, LineJoinRound = 2, LineJoinMiterClipped = 3 };
enum DashStyle {
    DashStyleSolid = 0,
    DashStyleDash = 1,
    DashStyleDot = 2,
    DashStyleDashDot = 3,
    DashStyleDashDotDot = 4
};
enum Unit {
    UnitWorld = 0,
    UnitDisplay = 1,
    UnitPixel = 2,
    UnitPoint = 3,
    UnitInch = 4,
    UnitDocument = 5,
    UnitMillimeter = 6
};
enum FontStyle {
    FontStyleRegular = 0,
    FontStyleBold = 1,
    FontStyleItalic = 2,
    FontStyleBoldItalic = 3,
    FontStyleUnderline = 4,
    FontStyleStrikeout = 8
};
enum StringAlignment { StringAlignmentNear = 0, StringAlignmentCenter = 1, StringAlignmentFar = 2 };
enum StringFormatFlags { StringFormatFlagsNoWrap = 0x1000, StringFormatFlagsNoClip = 0x4000 };
enum PaletteFlags { PaletteFlagsHasAlpha = 1, PaletteFlagsGrayScale = 2, PaletteFlagsHalftone = 4 };

using GraphicsState = UINT;

struct PointF {
    PointF() = default;
    PointF(REAL x, REAL y) : X(x), Y(y) {}
    REAL X = 0;
    REAL Y = 0;
};

struct Point {
    Point() = default;
    Point(INT x, INT y) : X(x), Y(y) {}
    INT X = 0;
    INT Y = 0;
};

struct SizeF {
    SizeF() = default;
    SizeF(REAL width, REAL height) : Width(width), Height(height) {}
    REAL Width = 0;
    REAL Height = 0;
};

struct Size {
    Size() = default;
    Size(INT width, INT height) : Width(width), Height(height) {}
    INT Width = 0;
    INT Height = 0;
};

struct RectF {
    RectF() = default;
    RectF(REAL x, REAL y, REAL width, REAL height) : X(x), Y(y), Width(width), Height(height) {}
    REAL GetLeft() const { return X; }
    REAL GetTop() const { return Y; }
    REAL GetRight() const { return X + Width; }
    REAL GetBottom() const { return Y + Height; }
    REAL X = 0;
    REAL Y = 0;
    REAL Width = 0;
    REAL Height = 0;
};

struct Rect {
    Rect() = default;
    Rect(INT x, INT y, INT width, INT height) : X(x), Y(y), Width(width), Height(height) {}
    INT GetLeft() const { return X; }
    INT GetTop() const { return Y; }
    INT GetRight() const { return X + Width; }
    INT GetBottom() const { return Y + Height; }
    INT X = 0;
    INT Y = 0;
    INT Width = 0;
    INT Height = 0;
};

class Color {
public:
    enum { Black = 0xFF000000, White = 0xFFFFFFFF, Red = 0xFFFF0000, Green = 0xFF008000, Blue = 0xFF0000FF };
    enum { Transparent = 0x00FFFFFF };

    Color() = default;
    Color(ARGB argb) : Argb(argb) {}
    Color(BYTE red, BYTE green, BYTE blue) : Argb(MakeARGB(255, red, green, blue)) {}
    Color(BYTE alpha, BYTE red, BYTE green, BYTE blue) : Argb(MakeARGB(alpha, red, green, blue)) {}

    BYTE GetA() const { return static_cast<BYTE>(Argb >> 24); }
    BYTE GetR() const { return static_cast<BYTE>(Argb >> 16); }
    BYTE GetG() const { return static_cast<BYTE>(Argb >> 8); }
    BYTE GetB() const { return static_cast<BYTE>(Argb); }
    BYTE GetAlpha() const { return GetA(); }
    BYTE GetRed() const { return GetR(); }
    BYTE GetGreen() const { return GetG(); }
    BYTE GetBlue() const { return GetB(); }
    ARGB GetValue() const { return Argb; }
    void SetValue(ARGB argb) { Argb = argb; }
    void SetFromCOLORREF(COLORREF rgb) { Argb = MakeARGB(255, GetRValue(rgb), GetGValue(rgb), GetBValue(rgb)); }
    COLORREF ToCOLORREF() const { return RGB(GetR(), GetG(), GetB()); }
    static ARGB MakeARGB(BYTE a, BYTE r, BYTE g, BYTE b) {
        return static_cast<ARGB>(b) | static_cast<ARGB>(g) << 8 | static_cast<ARGB>(r) << 16 |
               static_cast<ARGB>(a) << 24;
    }

private:
    ARGB Argb = 0xFF000000;
};

struct ColorPalette {
    UINT Flags;
    UINT Count;
    ARGB Entries[1];
};

struct BitmapData {
    UINT Width = 0;
    UINT Height = 0;
    INT Stride = 0;   // bytes from a row to the next one down
    INT PixelFormat = 0;
    void* Scan0 = nullptr;
    UINT_PTR Reserved = 0;
};

struct ImageCodecInfo {
    CLSID Clsid;
    GUID FormatID;
    const WCHAR* CodecName;
    const WCHAR* DllName;
    const WCHAR* FormatDescription;
    const WCHAR* FilenameExtension;
    const WCHAR* MimeType;
    DWORD Flags;
    DWORD Version;
    DWORD SigCount;
    DWORD SigSize;
    const BYTE* SigPattern;
    const BYTE* SigMask;
};

struct EncoderParameter {
    GUID Guid;
    ULONG NumberOfValues;
    ULONG Type;
    void* Value;
};

struct EncoderParameters {
    UINT Count;
    EncoderParameter Parameter[1];
};

// Neither is needed here: a host that calls them does so for other systems.
struct GdiplusStartupInput {
    UINT GdiplusVersion = 1;
    void* DebugEventCallback = nullptr;
    BOOL SuppressBackgroundThread = FALSE;
    BOOL SuppressExternalCodecs = FALSE;
};

struct GdiplusStartupOutput {
    void* NotificationHook = nullptr;
    void* NotificationUnhook = nullptr;
};

}   // namespace Gdiplus

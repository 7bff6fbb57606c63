#include "rastel/platform/portable/d3d9/capabilities.h"

#include <algorithm>
#include <string_view>

#include "rastel/platform/portable/d3d9/rasterizer.h"

namespace rastel::platform::d3d {

D3DCAPS9 Capabilities(D3DDEVTYPE type) {
    constexpr DWORD allComparisons = 0xFF, blendsToDestinationColor = 0x3FF;
    D3DCAPS9 caps{};
    caps.DeviceType = type;
    caps.PresentationIntervals = D3DPRESENT_INTERVAL_ONE | D3DPRESENT_INTERVAL_IMMEDIATE;
    caps.PrimitiveMiscCaps = D3DPMISCCAPS_MASKZ | D3DPMISCCAPS_CULLNONE | D3DPMISCCAPS_CULLCW | D3DPMISCCAPS_CULLCCW;
    caps.RasterCaps = D3DPRASTERCAPS_ZTEST | D3DPRASTERCAPS_SCISSORTEST;
    caps.ZCmpCaps = caps.AlphaCmpCaps = allComparisons;
    caps.SrcBlendCaps = caps.DestBlendCaps = blendsToDestinationColor;
    caps.TextureCaps = D3DPTEXTURECAPS_PERSPECTIVE | D3DPTEXTURECAPS_ALPHA | D3DPTEXTURECAPS_MIPMAP;
    caps.TextureFilterCaps = D3DPTFILTERCAPS_MINFPOINT | D3DPTFILTERCAPS_MINFLINEAR | D3DPTFILTERCAPS_MIPFPOINT |
                             D3DPTFILTERCAPS_MAGFPOINT | D3DPTFILTERCAPS_MAGFLINEAR;
    caps.TextureAddressCaps =
        D3DPTADDRESSCAPS_WRAP | D3DPTADDRESSCAPS_MIRROR | D3DPTADDRESSCAPS_CLAMP | D3DPTADDRESSCAPS_INDEPENDENTUV;
    caps.MaxTextureWidth = caps.MaxTextureHeight = caps.MaxTextureAspectRatio = longestSide;
    caps.MaxAnisotropy = 1;
    caps.MaxVertexW = 1e10f;
    caps.FVFCaps = 8;   // sets of texture co-ordinates that a vertex may have
    caps.TextureOpCaps = D3DTEXOPCAPS_DISABLE | D3DTEXOPCAPS_SELECTARG1 | D3DTEXOPCAPS_SELECTARG2 |
                         D3DTEXOPCAPS_MODULATE | D3DTEXOPCAPS_ADD;
    caps.MaxTextureBlendStages = caps.MaxSimultaneousTextures = 1;
    caps.MaxPointSize = 1;
    caps.MaxPrimitiveCount = mostTriangles;
    caps.MaxVertexIndex = 0xFFFFFFFF;
    caps.MaxStreams = 1;
    caps.MaxStreamStride = 0xFFFF;
    caps.NumberOfAdaptersInGroup = 1;
    caps.NumSimultaneousRTs = 1;
    caps.StretchRectFilterCaps = D3DPTFILTERCAPS_MINFPOINT | D3DPTFILTERCAPS_MAGFPOINT;
    return caps;
}

D3DADAPTER_IDENTIFIER9 AdapterIdentifier() {
    const auto put = [](std::string_view text, char* into) { *std::copy(text.begin(), text.end(), into) = 0; };
    D3DADAPTER_IDENTIFIER9 identifier{};
    put("rastel", identifier.Driver);
    put("Software device", identifier.Description);
    put(R"(\\.\DISPLAY1)", identifier.DeviceName);
    return identifier;
}

}   // namespace rastel::platform::d3d

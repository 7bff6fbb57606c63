// Direct3D 9 and D3DX 9 on a software device, for systems that have none.
//
// Found like the system's own, by LoadLibraryW and GetProcAddress: "D3D9.DLL", and "D3DX9_24.DLL" to "D3DX9_34.DLL".
// The device draws triangles of fixed-function vertices with one texture, a depth buffer and blending, and presents to
// a window.
#pragma once

#include "rastel/platform/portable/d3d9/caps.h"
#include "rastel/platform/portable/d3d9/d3dx9.h"
#include "rastel/platform/portable/d3d9/ids.h"
#include "rastel/platform/portable/d3d9/interfaces.h"
#include "rastel/platform/portable/d3d9/types.h"

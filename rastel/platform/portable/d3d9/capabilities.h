// What the software device can do, in the form that hosts ask for.
#pragma once

#include "rastel/platform/portable/d3d9.h"

namespace rastel::platform::d3d {

D3DCAPS9 Capabilities(D3DDEVTYPE type);
D3DADAPTER_IDENTIFIER9 AdapterIdentifier();

}   // namespace rastel::platform::d3d

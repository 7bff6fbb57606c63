#pragma once

#include "rastel/platform/windows/types.h"

#include <d3d9.h>
#include <d3dx9.h>

// DirectDraw's interfaces. This build has nothing behind them: a manager runs as on a machine without DirectDraw.
#pragma once

#include "rastel/platform/portable/types.h"

struct IDirectDraw2;
struct IDirectDrawSurface2;
struct IDirectDrawClipper;

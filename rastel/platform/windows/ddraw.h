#pragma once

#include "rastel/platform/windows/types.h"

#include <objbase.h>

#include <ddraw.h>

#pragma once

#include "rastel/platform/windows/types.h"

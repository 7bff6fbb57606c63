// The application framework's value classes, our own on every system: rectangles, points, sizes, wide text, locks.
#pragma once

#include "rastel/platform/framework/lock.h"
#include "rastel/platform/framework/rect.h"
#include "rastel/platform/framework/string.h"

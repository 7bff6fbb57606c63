// The names of GDI+ that the image and composite classes show in their interfaces.
#pragma once

#include "rastel/platform/portable/types.h"

namespace Gdiplus {
class Image;
class Bitmap;
class Graphics;
}   // namespace Gdiplus

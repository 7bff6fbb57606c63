#include "rastel/image/image.h"

winext::CImage::~CImage() = default;

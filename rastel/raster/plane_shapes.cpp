// Textures of planes are not drawn yet: the operations refuse.
#include "rastel/alpha/alpha_channel.h"

int CAlphaChannel::BltTexturedTriangle(FACE3D&, CAlphaChannel&, CRect*) {
    return 0;
}

int CAlphaChannel::BltTexture(CPoint* const, CRect*, CAlphaChannel&, CRect*, CRect*) {
    return 0;
}

int CAlphaChannel::BltRotate(CRect*, double, CPoint, CAlphaChannel&, CRect*, CRect*) {
    return 0;
}

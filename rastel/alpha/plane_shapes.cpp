// Filters and textures of planes are not made yet: the operations refuse.
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

CAlphaChannel* CAlphaChannel::Expand(int, int) {
    return nullptr;
}

CAlphaChannel* CAlphaChannel::Blur(int) {
    return nullptr;
}

int CAlphaChannel::Subtract(CAlphaChannel&, int, int) {
    return 0;
}

int CAlphaChannel::TressHold(int, unsigned char, unsigned char) {
    return 0;
}

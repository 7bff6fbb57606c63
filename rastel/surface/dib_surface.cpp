#include "rastel/surface/dib_surface.h"

#include "rastel/surface/dib_store_body.h"

template class rastel::DibStore<CSurface>;

CDibSurface::CDibSurface() = default;

CDibSurface::~CDibSurface() {
    CDibSurface::Destroy();
}

int CDibSurface::InitializeSurface(int width, int height) {
    return CreatePixels(width, height, 32);
}

void CDibSurface::Destroy() {
    const CSingleLock lock(&m_SyncObject, TRUE);
    ReleasePixels();
    CSurface::Destroy();
}

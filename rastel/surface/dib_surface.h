// The colour surface in main memory. Its pixels start as all zero.
#pragma once

#include "rastel/surface/dib_store.h"
#include "rastel/surface/surface.h"

class RASTEL_API CDibSurface : public rastel::DibStore<CSurface> {
public:
    CDibSurface();
    ~CDibSurface() override;

    int InitializeSurface(int width, int height) override;   // pixels, both above 0
    void Destroy() override;
};

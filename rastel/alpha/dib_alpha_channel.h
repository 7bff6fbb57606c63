// The plane in main memory, an 8-bit DIB section with a grey colour table. Its bytes start as all zero.
#pragma once

#include "rastel/alpha/alpha_channel.h"
#include "rastel/surface/dib_store.h"

class RASTEL_API CDibAlphaChannel : public rastel::DibStore<CAlphaChannel> {
public:
    CDibAlphaChannel();
    ~CDibAlphaChannel() override;

    int Initialize(int width, int height) override;   // pixels, both above 0
    void Destroy() override;
};

#include "rastel/alpha/dib_alpha_channel.h"

#include "rastel/surface/dib_store_body.h"

template class rastel::DibStore<CAlphaChannel>;

CDibAlphaChannel::CDibAlphaChannel() = default;

CDibAlphaChannel::~CDibAlphaChannel() {
    CDibAlphaChannel::Destroy();
}

int CDibAlphaChannel::Initialize(int width, int height) {
    return CreatePixels(width, height, 8);
}

void CDibAlphaChannel::Destroy() {
    const CSingleLock lock(&m_SyncObject, TRUE);
    ReleasePixels();
}

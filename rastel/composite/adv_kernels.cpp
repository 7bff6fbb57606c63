#include "rastel/composite/adv_kernels.h"

#include "rastel/surface/kernels.h"

WORD s_Reciprocal[256] = {};

void InitReciprocalTable() {
    if (s_Reciprocal[0] != 0) {
        return;
    }
    s_Reciprocal[0] = s_Reciprocal[1] = 65535;
    for (int i = 2; i < 256; ++i) {
        s_Reciprocal[i] = static_cast<WORD>(65536 / i);
    }
}

void AlphaAdvLineMMX(unsigned char* pDst, unsigned char* pDstAlpha, const unsigned char* pSrc,
                     const unsigned char* pAlpha, int count) {
    rastel::kernels::Rows().alphaAdvRect(pDst, 0, pDstAlpha, 0, pSrc, 0, pAlpha, 0, count, 1);
}

void AlphaColorAdvLineMMX(unsigned char* pDst, unsigned char* pDstAlpha, DWORD color, const unsigned char* pAlpha,
                          int count) {
    rastel::kernels::Rows().alphaColorAdvRect(pDst, 0, pDstAlpha, 0, color, pAlpha, 0, count, 1);
}

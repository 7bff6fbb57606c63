#include "rastel/surface/mmx.h"

#include "rastel/platform/cpu.h"

int s_MMXEnabled = 1;
int s_MMXDetected = 0;

void EnableMMX(int enable) {
    s_MMXEnabled = enable;
}

int UseMMX() {
    if (s_MMXEnabled == 0) {
        return 0;
    }
    if (s_MMXDetected != 0) {
        return 1;
    }
    s_MMXDetected = rastel::platform::ProcessorHasMmx() ? 1 : 0;
    return s_MMXDetected;
}

// What the processor can do. On processors of another family the answer is always no.
#pragma once

namespace rastel::platform {

bool ProcessorHasMmx();
bool ProcessorHasSse2();
bool ProcessorHasAvx2();   // with the system's consent to the wide registers

}   // namespace rastel::platform

// Planes made from pixels. memcpy moves the pixels, four times the plane's bytes; no peer has these operations.
#include "families.h"
#include "support/contenders.h"

namespace rastel::bench {

void AddPlaneMasks(Suite& suite) {
    AddMemcpy(suite, "transparent mask");
    suite.Add("transparent mask", "Rastel", [](const Round& r) {
        return r.targetPlane->TransparentMask(r.x, r.y, *r.sprite, transparentKey, nullptr, nullptr);
    });
    AddTables(suite, "transparent mask", [](const kernels::RowTable& table, const Round& r) {
        table.transparentMaskRect(r.toPlane.at, r.toPlane.pitch, r.fromSprite.at, r.fromSprite.pitch, r.width, r.height,
                                  transparentKey);
    });
    AddMemcpy(suite, "opaque mask");
    suite.Add("opaque mask", "Rastel", [](const Round& r) {
        return r.targetPlane->OpaqueMask(r.x, r.y, *r.sprite, transparentKey, nullptr, nullptr);
    });
    AddTables(suite, "opaque mask", [](const kernels::RowTable& table, const Round& r) {
        table.opaqueMaskRect(r.toPlane.at, r.toPlane.pitch, r.fromSprite.at, r.fromSprite.pitch, r.width, r.height,
                             transparentKey);
    });
}

}   // namespace rastel::bench

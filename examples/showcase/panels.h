// What stands in each panel of the page. A panel draws inside the rectangle that it is given.
#pragma once

#include "examples/showcase/layout.h"
#include "examples/showcase/stock.h"

namespace rastel::showcase {

struct Sheet {
    CDisplayManager& manager;
    const Stock& stock;
    const Layout& layout;
    CSurface& surface;
};

// Enlarged, mirrored, upside down and small.
void DrawStretches(const Sheet& sheet, const CRect& area);

// One photograph through twelve windows.
void DrawCopies(const Sheet& sheet, const CRect& area);

// Masks made from colours, and their algebra, as greys.
void DrawPlanes(const Sheet& sheet, const CRect& area);

// Solid fills under stripes of shade; the rest of `area` is the table for the moving card, and is given back.
CRect DrawFills(const Sheet& sheet, const CRect& area);

}   // namespace rastel::showcase

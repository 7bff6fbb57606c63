#include "examples/showcase/paint.h"
#include "examples/showcase/panels.h"

namespace rastel::showcase {

CRect DrawFills(const Sheet& sheet, const CRect& area) {
    constexpr COLORREF colors[] = {RGB(226, 87, 44),  RGB(246, 190, 60), RGB(92, 158, 92),
                                   RGB(46, 134, 171), RGB(78, 82, 150),  RGB(150, 70, 120)};
    constexpr int count = static_cast<int>(std::size(colors));
    const int height = area.Height() * 24 / 100;
    for (int index = 0; index < count; ++index) {
        CRect swatch(area.left + area.Width() * index / count, area.top, area.left + area.Width() * (index + 1) / count,
                     area.top + height);
        sheet.surface.FillColor(&swatch, colors[index], nullptr);
    }
    // Each stripe reaches to the bottom, so the shades add up.
    constexpr int stripes = 3;
    for (int stripe = 1; stripe <= stripes; ++stripe) {
        CRect shade(area.left, area.top + height * stripe / (stripes + 1), area.right, area.top + height);
        sheet.surface.ShadowBlt(&shade, 22);
    }
    const CRect table(area.left, area.top + height + sheet.layout.Length(10), area.right, area.bottom);
    FillGradient(sheet.surface, table, RGB(150, 186, 188), RGB(70, 112, 128));
    return table;
}

}   // namespace rastel::showcase

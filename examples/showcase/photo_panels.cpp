#include "examples/showcase/paint.h"
#include "examples/showcase/panels.h"

namespace rastel::showcase {

namespace {

CRect Whole(CSurface& surface) {
    return CRect(0, 0, surface.GetWidth(), surface.GetHeight());
}

// A square round the middle of the upper half, where a photograph has its face.
CRect Detail(CSurface& photo) {
    const int side = std::max(1, std::min(photo.GetWidth(), photo.GetHeight()) / 6);
    const int left = photo.GetWidth() * 38 / 100 - side * 3 / 4;
    const int top = photo.GetHeight() * 36 / 100 - side / 2;
    CRect detail(left, top, left + side * 3 / 2, top + side);
    detail.IntersectRect(detail, Whole(photo));
    return detail;
}

void WriteNote(const Sheet& sheet, const CRect& cell, const wchar_t* note, const CRect& clip) {
    WriteText(sheet.surface, cell.left + cell.Width() / 2, cell.bottom + sheet.layout.Length(3), note,
              {sheet.layout.Length(11), FW_NORMAL, ink::quiet, TA_CENTER}, clip);
}

}   // namespace

void DrawStretches(const Sheet& sheet, const CRect& area) {
    CSurface& page = sheet.surface;
    const int gap = sheet.layout.Length(10);
    const int note = sheet.layout.Length(20);
    const int upperHeight = (area.Height() - 2 * note - gap) * 60 / 100;
    const int half = (area.Width() - gap) / 2;

    CRect enlarged(area.left, area.top, area.left + half, area.top + upperHeight);
    CRect detail = Detail(sheet.stock.Photo(0));
    CRect shaped = CoverOf(detail.Size(), enlarged.Size());
    shaped.OffsetRect(detail.left, detail.top);
    page.StretchBlt(&enlarged, sheet.stock.Photo(0), &shaped, nullptr);
    DrawFrame(page, enlarged, ink::edge, 1);
    WriteNote(sheet, enlarged, L"enlarged, pixel by pixel", area);

    // A negative width mirrors, backwards from the last column: the two halves meet in the middle.
    const CRect mirrored(area.right - half, area.top, area.right, area.top + upperHeight);
    const int middle = mirrored.left + mirrored.Width() / 2;
    CRect plain(mirrored.left, mirrored.top, middle, mirrored.bottom);
    CRect turned(mirrored.right - 1, mirrored.top, middle - 1, mirrored.bottom);
    CSurface& coffee = sheet.stock.Photo(2);
    CRect part = CoverOf(CSize(coffee.GetWidth(), coffee.GetHeight()), plain.Size());
    page.StretchBlt(&plain, coffee, &part, nullptr);
    page.StretchBlt(&turned, coffee, &part, nullptr);
    DrawFrame(page, mirrored, ink::edge, 1);
    WriteNote(sheet, mirrored, L"mirrored at the middle", area);

    constexpr int thumbnails = 4;
    const wchar_t* const notes[thumbnails] = {L"small", L"smaller", L"upside down", L"turned round"};
    const int width = (area.Width() - (thumbnails - 1) * gap) / thumbnails;
    const int top = area.top + upperHeight + note + gap;
    for (int index = 0; index < thumbnails; ++index) {
        const int left = area.left + index * (width + gap);
        CRect cell(left, top, left + width, area.bottom - note);
        CSurface& photo = sheet.stock.Photo(static_cast<std::size_t>(index + 3));
        CRect source = CoverOf(CSize(photo.GetWidth(), photo.GetHeight()), cell.Size());
        CRect target(cell);
        if (index == 1) {
            page.FillColor(&cell, RGB(24, 28, 40), nullptr);
            target.DeflateRect(cell.Width() / 5, cell.Height() / 5);
        } else if (index >= 2) {
            target.SetRect(cell.left, cell.bottom - 1, cell.right, cell.top - 1);
            if (index == 3) {
                target.SetRect(cell.right - 1, target.top, cell.left - 1, target.bottom);
            }
        }
        page.StretchBlt(&target, photo, &source, nullptr);
        DrawFrame(page, cell, ink::edge, 1);
        WriteNote(sheet, cell, notes[index], area);
    }
}

void DrawCopies(const Sheet& sheet, const CRect& area) {
    constexpr int columns = 4, rows = 3;
    const int gap = sheet.layout.Length(7);
    const example::Surface picture(sheet.manager.CreateSurface(std::max(area.Width(), 1), std::max(area.Height(), 1)));
    if (!picture) {
        return;
    }
    CoverWith(*picture, Whole(*picture), sheet.stock.Photo(0));
    const int width = (area.Width() - (columns - 1) * gap) / columns;
    const int height = (area.Height() - (rows - 1) * gap) / rows;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const int left = area.left + column * (width + gap);
            const int top = area.top + row * (height + gap);
            CRect window(left, top, left + width, top + height);
            DropShadow(sheet.surface, window, {CSize(1, 2), sheet.layout.Length(5), 40}, area);
            // The whole photograph is copied each time; the window is the clip.
            sheet.surface.CopyBlt(area.left, area.top, *picture, nullptr, &window);
        }
    }
}

}   // namespace rastel::showcase

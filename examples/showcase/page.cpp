#include "examples/showcase/page.h"

#include "examples/showcase/paint.h"

namespace rastel::showcase {

Page::Page(const PageSetup& setup)
    : manager_(setup.manager),
      stock_(setup.stock),
      layout_(setup.size.cx, setup.size.cy),
      size_(setup.size),
      display_(setup.display) {}

bool Page::MakeStores() {
    still_.reset(manager_.CreateSurface(size_.cx, size_.cy));
    surface_.reset(manager_.CreateSurface(size_.cx, size_.cy));
    return still_ && surface_;
}

void Page::Draw(double seconds) {
    // Only what moves is drawn anew; the rest of the page still stands.
    for (CRect& area : moving_) {
        surface_->CopyBlt(area.left, area.top, *still_, &area, nullptr);
    }
    DrawMoving(seconds);
}

// A card with its title; the rectangle inside it is given back.
CRect Page::DrawPanel(const CRect& rect, const wchar_t* title, const wchar_t* subtitle) {
    const CRect page(0, 0, still_->GetWidth(), still_->GetHeight());
    DropShadow(*still_, rect, {CSize(0, layout_.Length(4)), layout_.Length(12), 26}, page);
    CRect card(rect);
    still_->FillColor(&card, ink::paper, nullptr);
    DrawFrame(*still_, rect, ink::edge, 1);
    const int margin = layout_.Length(14);
    CRect inside(rect);
    inside.DeflateRect(margin, margin);
    WriteText(*still_, inside.left, inside.top - layout_.Length(4), title, {layout_.Length(15), FW_BOLD, ink::text},
              rect);
    WriteText(*still_, inside.left, inside.top + layout_.Length(16), subtitle,
              {layout_.Length(11), FW_NORMAL, ink::quiet}, rect);
    inside.top += layout_.Length(38);
    return inside;
}

CRect Page::DrawMovingPanel(const CRect& rect, const wchar_t* title, const wchar_t* subtitle) {
    moving_.push_back(DrawPanel(rect, title, subtitle));
    return moving_.back();
}

void Page::DrawHeader(const wchar_t* subtitle) {
    CSurface& page = *still_;
    // A display of few colours shows a gentle gradient as bands in other hues, so there the grounds are even.
    const int bits = manager_.GetBitsPrPixel();
    const CRect whole(0, 0, page.GetWidth(), page.GetHeight());
    const CRect header = layout_.Rect(0, 0, 1024, 72);
    if (bits >= 24) {
        FillGradient(page, whole, RGB(244, 240, 232), RGB(222, 217, 205));
    } else {
        page.FillColor(nullptr, bits > 8 ? RGB(231, 227, 214) : RGB(192, 192, 192), nullptr);
    }
    FillGradient(page, header, bits > 8 ? RGB(22, 30, 50) : RGB(0, 32, 64),
                 bits > 8 ? RGB(42, 60, 92) : RGB(0, 32, 64));
    CRect rule(header.left, header.bottom, header.right, header.bottom + layout_.Length(3));
    page.FillColor(&rule, ink::accent, nullptr);
    WriteText(page, layout_.X(24), layout_.Y(12), L"Rastel", {layout_.Length(38), FW_BOLD, ink::white}, header);
    WriteText(page, layout_.X(24) + layout_.Length(172), layout_.Y(30), subtitle,
              {layout_.Length(16), FW_NORMAL, RGB(176, 196, 224)}, header);
    WriteText(page, layout_.X(1000), layout_.Y(33), display_,
              {layout_.Length(12), FW_NORMAL, RGB(176, 196, 224), TA_RIGHT}, header);
}

}   // namespace rastel::showcase

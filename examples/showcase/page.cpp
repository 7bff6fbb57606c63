#include "examples/showcase/page.h"

#include <cmath>

#include "examples/showcase/paint.h"
#include "examples/showcase/panels.h"

namespace rastel::showcase {

std::unique_ptr<Page> Page::Create(CDisplayManager& manager, const Stock& stock, const SIZE& size,
                                   const std::wstring& display) {
    std::unique_ptr<Page> page(new Page(manager, stock, size));
    if (!page->MakeStores(size)) {
        return nullptr;
    }
    page->DrawStill(display);
    page->surface_->CopyBlt(0, 0, *page->still_, nullptr, nullptr);
    return page;
}

Page::Page(CDisplayManager& manager, const Stock& stock, const SIZE& size)
    : manager_(manager), stock_(stock), layout_(size.cx, size.cy) {}

bool Page::MakeStores(const SIZE& size) {
    still_.reset(manager_.CreateSurface(size.cx, size.cy));
    surface_.reset(manager_.CreateSurface(size.cx, size.cy));
    const int cupHeight = layout_.Length(122);
    cup_ = ScaledSprite(manager_, *stock_.cup, cupHeight * stock_.cup->GetWidth() / stock_.cup->GetHeight(), cupHeight);

    struct Flight {
        int height;
        double start, speed, altitude, swing;
    };
    for (const Flight& flight : {Flight{58, 0.70, 0.021, 0.16, 0.04}, Flight{88, 0.20, 0.034, 0.22, 0.05},
                                 Flight{132, 0.43, 0.052, 0.34, 0.06}}) {
        CSurface& balloon = *stock_.balloon;
        const int height = layout_.Length(flight.height);
        balloons_.push_back({ScaledSprite(manager_, balloon, height * balloon.GetWidth() / balloon.GetHeight(), height),
                             flight.start, flight.speed, flight.altitude, flight.swing});
        if (!balloons_.back().sprite) {
            return false;
        }
    }
    return still_ && surface_ && cup_;
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

void Page::DrawStill(const std::wstring& display) {
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
    WriteText(page, layout_.X(24) + layout_.Length(172), layout_.Y(30), L"surfaces, planes and their presentation",
              {layout_.Length(16), FW_NORMAL, RGB(176, 196, 224)}, header);
    WriteText(page, layout_.X(1000), layout_.Y(33), display,
              {layout_.Length(12), FW_NORMAL, RGB(176, 196, 224), TA_RIGHT}, header);

    const Sheet sheet{manager_, stock_, layout_, page};
    sky_ = DrawPanel(layout_.Rect(24, 98, 590, 426), L"Sprites",
                     L"TransparentBlt: a colour key, over a stretched photograph");
    CoverWith(page, sky_, stock_.Photo(1));
    DrawStretches(sheet,
                  DrawPanel(layout_.Rect(610, 98, 1000, 426), L"Stretches", L"StretchBlt: larger, smaller, mirrored"));
    DrawCopies(sheet, DrawPanel(layout_.Rect(24, 446, 330, 744), L"Clipped copies",
                                L"CopyBlt: one photograph, twelve windows"));
    DrawPlanes(sheet,
               DrawPanel(layout_.Rect(350, 446, 714, 744), L"Planes", L"CAlphaChannel: masks and their algebra"));
    table_ = DrawFills(sheet,
                       DrawPanel(layout_.Rect(734, 446, 1000, 744), L"Fills and shadows", L"FillColor and ShadowBlt"));
}

void Page::Draw(double seconds) {
    // Only what moves is drawn anew; the rest of the page still stands.
    for (CRect* const area : {&sky_, &table_}) {
        surface_->CopyBlt(area->left, area->top, *still_, area, nullptr);
    }
    DrawBalloons(seconds);
    DrawCard(seconds);
}

void Page::DrawBalloons(double seconds) {
    for (const Balloon& balloon : balloons_) {
        const double way = balloon.start + balloon.speed * seconds;
        const double width = balloon.sprite->GetWidth();
        const double span = sky_.Width() + width;   // it leaves on one side before it comes in on the other
        const double left = (way - std::floor(way)) * span - width;
        const double share = balloon.height + balloon.swing * std::sin(seconds * 0.7 + balloon.start * 9);
        const int top = static_cast<int>(share * sky_.Height());
        surface_->TransparentBlt(sky_.left + static_cast<int>(left), sky_.top + top, *balloon.sprite, spriteKey,
                                 nullptr, &sky_);
    }
}

// The light goes round the card, now near and now far.
void Page::DrawCard(double seconds) {
    CRect card(table_);
    card.DeflateRect(table_.Width() / 6, table_.Height() / 10);
    const double angle = seconds * 0.9 + 0.9;
    const double reach = layout_.Length(11) + layout_.Length(4) * std::sin(seconds * 0.6);
    const Shadow shadow = {CSize(static_cast<int>(std::lround(reach * std::cos(angle))),
                                 static_cast<int>(std::lround(reach * std::sin(angle)))),
                           layout_.Length(10), 46};
    DropShadow(*surface_, card, shadow, table_);
    surface_->FillColor(&card, ink::paper, &table_);
    DrawFrame(*surface_, card, ink::edge, 1);
    const int x = card.left + (card.Width() - cup_->GetWidth()) / 2;
    const int y = card.top + (card.Height() - cup_->GetHeight()) / 2;
    surface_->TransparentBlt(x, y, *cup_, spriteKey, nullptr, &card);
}

}   // namespace rastel::showcase

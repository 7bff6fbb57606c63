// Surfaces and planes by themselves: keyed sprites, stretches, clipped copies, masks, fills and shadows.
#include <cmath>

#include "examples/showcase/page.h"
#include "examples/showcase/paint.h"
#include "examples/showcase/panels.h"

namespace rastel::showcase {

namespace {

class SpritesPage : public Page {
public:
    explicit SpritesPage(const PageSetup& setup) : Page(setup) {}

    bool MakeSprites();
    void DrawStill();

private:
    struct Balloon {
        example::Surface sprite;
        double start, speed, height, swing;   // shares of the area; the speed is for each second
    };

    void DrawMoving(double seconds) override;
    void DrawBalloons(double seconds);
    void DrawCard(double seconds);

    std::vector<Balloon> balloons_;
    example::Surface cup_;
    CRect sky_, table_;
};

bool SpritesPage::MakeSprites() {
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
    return MakeStores() && cup_;
}

void SpritesPage::DrawStill() {
    DrawHeader(L"surfaces, planes and their presentation");
    const Sheet sheet{manager_, stock_, layout_, *still_};
    sky_ = DrawMovingPanel(layout_.Rect(24, 98, 590, 426), L"Sprites",
                           L"TransparentBlt: a colour key, over a stretched photograph");
    CoverWith(*still_, sky_, stock_.Photo(1));
    DrawStretches(sheet,
                  DrawPanel(layout_.Rect(610, 98, 1000, 426), L"Stretches", L"StretchBlt: larger, smaller, mirrored"));
    DrawCopies(sheet, DrawPanel(layout_.Rect(24, 446, 330, 744), L"Clipped copies",
                                L"CopyBlt: one photograph, twelve windows"));
    DrawPlanes(sheet,
               DrawPanel(layout_.Rect(350, 446, 714, 744), L"Planes", L"CAlphaChannel: masks and their algebra"));
    table_ = DrawFills(sheet,
                       DrawPanel(layout_.Rect(734, 446, 1000, 744), L"Fills and shadows", L"FillColor and ShadowBlt"));
    moving_.push_back(table_);
    KeepStill();
}

void SpritesPage::DrawMoving(double seconds) {
    DrawBalloons(seconds);
    DrawCard(seconds);
}

void SpritesPage::DrawBalloons(double seconds) {
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
void SpritesPage::DrawCard(double seconds) {
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

}   // namespace

std::unique_ptr<Page> MakeSpritesPage(const PageSetup& setup) {
    auto page = std::make_unique<SpritesPage>(setup);
    if (!page->MakeSprites()) {
        return nullptr;
    }
    page->DrawStill();
    return page;
}

}   // namespace rastel::showcase

// Pictures turned, scaled and drawn on any four points.
#include <algorithm>
#include <cmath>

#include "examples/showcase/composites.h"
#include "examples/showcase/page.h"
#include "examples/showcase/paint.h"

namespace rastel::showcase {

namespace {

int Rounded(double value) {
    return static_cast<int>(std::lround(value));
}

CRect BoxAround(const CPoint& middle, double halfWidth, double halfHeight) {
    return CRect(middle.x - Rounded(halfWidth), middle.y - Rounded(halfHeight), middle.x + Rounded(halfWidth),
                 middle.y + Rounded(halfHeight));
}

class TurningPage : public Page {
public:
    explicit TurningPage(const PageSetup& setup) : Page(setup) {}

    bool DrawStill();

private:
    void DrawMoving(double seconds) override;
    void DrawTurned(double seconds);
    void DrawOntoPlane(double seconds);
    void DrawSheet(double seconds);
    void DrawCard(double seconds);
    Composite Scaled(std::size_t photo, const CSize& size, int softness) const;

    Composite screen_;   // around the page's surface
    CRect sky_, group_, sheet_, space_;
    Composite balloon_, portrait_, photo_, card_, pane_;
    std::vector<Composite> soft_;
};

// A photograph of that size, with a soft rim where `softness` is above 0.
Composite TurningPage::Scaled(std::size_t photo, const CSize& size, int softness) const {
    const example::Surface picture(manager_.CreateSurface(std::max<int>(size.cx, 1), std::max<int>(size.cy, 1)));
    if (!picture) {
        return nullptr;
    }
    CoverWith(*picture, CRect(0, 0, picture->GetWidth(), picture->GetHeight()), stock_.Photo(photo));
    return softness > 0 ? SoftEdged(manager_, *picture, softness) : Around(*picture);
}

bool TurningPage::DrawStill() {
    if (!MakeStores()) {
        return false;
    }
    DrawHeader(L"turned, scaled, on any four points");
    sky_ = DrawMovingPanel(layout_.Rect(24, 98, 590, 426), L"Turned and scaled",
                           L"BltRotate: opaque, through a plane, through a key");
    group_ =
        DrawMovingPanel(layout_.Rect(610, 98, 1000, 426), L"Onto a plane", L"BltRotate between composites with planes");
    sheet_ = DrawMovingPanel(layout_.Rect(24, 446, 500, 744), L"A sheet of quads", L"BltTexture, forty pieces");
    space_ = DrawMovingPanel(layout_.Rect(520, 446, 1000, 744), L"A card in space",
                             L"BuildScaledRotatedVertexList3d and BltTexture");
    FillGradient(*still_, sky_, RGB(120, 160, 205), RGB(214, 226, 236));
    DrawChecks(*still_, group_, layout_.Length(14));
    FillGradient(*still_, sheet_, RGB(40, 48, 66), RGB(24, 28, 40));
    FillGradient(*still_, space_, RGB(24, 28, 40), RGB(60, 66, 92));
    KeepStill();
    screen_ = Around(*surface_);
    balloon_ = KeyedComposite(*stock_.balloon);
    portrait_ = Scaled(0, CSize(sky_.Width() / 3, sky_.Width() / 3), layout_.Length(14));
    photo_ = Scaled(1, CSize(sky_.Width() / 3, sky_.Width() / 4), 0);
    card_ = Scaled(2, CSize(space_.Width() / 2, space_.Height() * 6 / 10), 0);
    for (std::size_t photo = 0; photo < 3; ++photo) {
        soft_.push_back(Scaled(photo, CSize(group_.Width() / 2, group_.Height() / 3), layout_.Length(8)));
        if (!soft_.back()) {
            return false;
        }
    }
    pane_.reset(manager_.CreateAdvSurface(std::max(group_.Width(), 1), std::max(group_.Height(), 1), 1));
    return portrait_ && photo_ && card_ && pane_ && pane_->GetAlphaChannel();
}

void TurningPage::DrawMoving(double seconds) {
    DrawTurned(seconds);
    DrawOntoPlane(seconds);
    DrawSheet(seconds);
    DrawCard(seconds);
}

void TurningPage::DrawTurned(double seconds) {
    const auto place = [&](int sixths, Composite& picture, double scale) {
        const CPoint middle(sky_.left + sky_.Width() * sixths / 6, sky_.top + sky_.Height() / 2);
        return BoxAround(middle, picture->GetWidth() * scale / 2, picture->GetHeight() * scale / 2);
    };
    const double pulse = 0.75 + 0.2 * std::sin(seconds * 0.9);
    const double balloonScale = 0.8 * sky_.Height() / std::max(balloon_->GetHeight(), 1);
    CRect photo = place(1, photo_, pulse), soft = place(3, portrait_, 1.15 - pulse * 0.4);
    CRect balloon = place(5, balloon_, balloonScale);
    screen_->BltRotate(&photo, seconds * 0.6 + 0.3, photo.CenterPoint(), *photo_, nullptr, &sky_);
    screen_->BltRotate(&soft, -seconds * 0.5, soft.CenterPoint(), *portrait_, nullptr, &sky_);
    screen_->BltRotate(&balloon, 0.5 * std::sin(seconds * 1.2), balloon.CenterPoint(), *balloon_, nullptr, &sky_);
}

// The pane is transparent itself; what turns onto it keeps its soft rims, over the checks too.
void TurningPage::DrawOntoPlane(double seconds) {
    pane_->FillColor(nullptr, 0, nullptr);
    pane_->GetAlphaChannel()->Fill(nullptr, 0, nullptr);
    const CPoint middle(pane_->GetWidth() / 2, pane_->GetHeight() / 2);
    for (std::size_t i = 0; i < soft_.size(); ++i) {
        const double angle = seconds * 0.4 + static_cast<double>(i) * 2.0944;
        const CPoint at(middle.x + Rounded(pane_->GetWidth() * 0.2 * std::cos(angle)),
                        middle.y + Rounded(pane_->GetHeight() * 0.2 * std::sin(angle)));
        CRect place = BoxAround(at, soft_[i]->GetWidth() * 0.45, soft_[i]->GetHeight() * 0.45);
        pane_->BltRotate(&place, seconds * 0.5 + static_cast<double>(i), at, *soft_[i], nullptr, nullptr);
    }
    screen_->Blt(group_.left, group_.top, *pane_, nullptr, &group_);
}

// Neighbours share their corners: the sheet must show no cracks.
void TurningPage::DrawSheet(double seconds) {
    constexpr int columns = 8, rows = 5;
    CSurface& picture = stock_.Photo(0);
    const Composite source = Around(picture);
    const CRect part = CoverOf(CSize(picture.GetWidth(), picture.GetHeight()), sheet_.Size());
    CRect flat(sheet_);
    flat.DeflateRect(sheet_.Width() / 10, sheet_.Height() / 8);
    const auto corner = [&](int column, int row) {
        const double phase = seconds * 1.6 + column * 0.8 + row * 0.5;
        return CPoint(flat.left + flat.Width() * column / columns + Rounded(flat.Width() * 0.03 * std::sin(phase)),
                      flat.top + flat.Height() * row / rows + Rounded(flat.Height() * 0.06 * std::cos(phase * 1.2)));
    };
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            CPoint corners[4] = {corner(column, row), corner(column + 1, row), corner(column + 1, row + 1),
                                 corner(column, row + 1)};
            CRect piece(part.left + part.Width() * column / columns, part.top + part.Height() * row / rows,
                        part.left + part.Width() * (column + 1) / columns, part.top + part.Height() * (row + 1) / rows);
            screen_->BltTexture(corners, *source, &piece, &sheet_);
        }
    }
}

void TurningPage::DrawCard(double seconds) {
    const CPoint middle = space_.CenterPoint();
    const CRect place = BoxAround(middle, card_->GetWidth() / 2.0, card_->GetHeight() / 2.0);
    CPoint corners[4];
    BuildScaledRotatedVertexList3d(place, middle, 0.6 * std::sin(seconds * 0.7) + 0.35, seconds * 0.9 + 0.6,
                                   0.25 * std::sin(seconds * 0.5), 1.1, corners);
    screen_->BltTexture(corners, *card_, nullptr, &space_);
}

}   // namespace

std::unique_ptr<Page> MakeTurningPage(const PageSetup& setup) {
    auto page = std::make_unique<TurningPage>(setup);
    return page->DrawStill() ? std::move(page) : nullptr;
}

}   // namespace rastel::showcase

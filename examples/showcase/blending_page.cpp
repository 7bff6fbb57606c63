// Colour, plane and key together: soft shadows, fades, composites over composites, masks that cut.
#include <algorithm>
#include <cmath>

#include "examples/showcase/composites.h"
#include "examples/showcase/page.h"
#include "examples/showcase/paint.h"

namespace rastel::showcase {

namespace {

constexpr double circle = 2 * 3.14159265358979323846;

int Rounded(double value) {
    return static_cast<int>(std::lround(value));
}

class BlendingPage : public Page {
public:
    explicit BlendingPage(const PageSetup& setup) : Page(setup) {}

    bool DrawStill();

private:
    // A sprite and the soft plane that it throws as a shadow, larger by `reach` on each side.
    struct Floating {
        Composite sprite;
        example::Plane shadow;
        int reach;
    };

    Floating MakeFloating(CSurface& sprite, int height) const;
    example::Surface Covering(const CRect& area, std::size_t photo) const;
    bool MakeShapes();
    bool MakeRing();

    void DrawMoving(double seconds) override;
    void DrawShadows(double seconds);
    void DrawFades(double seconds);
    void DrawGroup(double seconds);
    void DrawCuts(double seconds);

    Composite screen_;   // around the page's surface
    CRect table_, fade_, steps_, over_, cuts_;
    std::vector<Floating> floating_;
    example::Surface from_, to_, sprite_;
    std::vector<Composite> discs_;
    Composite group_;
    example::Plane ring_;
};

BlendingPage::Floating BlendingPage::MakeFloating(CSurface& sprite, int height) const {
    Floating made = {};
    const example::Surface scaled =
        ScaledSprite(manager_, sprite, height * sprite.GetWidth() / std::max(sprite.GetHeight(), 1), height);
    if (!scaled) {
        return made;
    }
    const int grown = 2, blurred = std::clamp(layout_.Length(9), 1, 30);
    made.sprite = KeyedComposite(*scaled);
    const example::Plane mask(made.sprite->MakeMask(0, 0, 255));
    const example::Plane larger(mask ? mask->Expand(grown, 150) : nullptr);
    made.shadow.reset(larger ? larger->Blur(blurred) : nullptr);
    made.reach = grown + blurred;
    return made;
}

example::Surface BlendingPage::Covering(const CRect& area, std::size_t photo) const {
    example::Surface picture(manager_.CreateSurface(std::max(area.Width(), 1), std::max(area.Height(), 1)));
    if (picture) {
        CoverWith(*picture, CRect(0, 0, picture->GetWidth(), picture->GetHeight()), stock_.Photo(photo));
    }
    return picture;
}

// A disc with a hole, hard at its edges: blurred discs cut out of one another and judged at the middle.
bool BlendingPage::MakeRing() {
    const int side = std::max(std::min(cuts_.Width(), cuts_.Height()) * 7 / 10, 16);
    const Composite outer = Disc(manager_, side, 2, 0), inner = Disc(manager_, side / 2, 2, 0);
    ring_.reset(manager_.CreateAlphaChannel(side, side));
    if (!outer || !inner || !ring_) {
        return false;
    }
    const int middle = (side - inner->GetWidth()) / 2;
    ring_->CopyBlt(0, 0, *outer->GetAlphaChannel(), nullptr, nullptr);
    return ring_->Subtract(*inner->GetAlphaChannel(), middle, middle) && ring_->TressHold(128, 0, 200);
}

bool BlendingPage::MakeShapes() {
    floating_.push_back(MakeFloating(*stock_.cup, layout_.Length(150)));
    floating_.push_back(MakeFloating(*stock_.balloon, layout_.Length(190)));
    for (const Floating& floating : floating_) {
        if (!floating.sprite || !floating.shadow) {
            return false;
        }
    }
    from_ = Covering(fade_, 0);
    to_ = Covering(fade_, 2);
    const int height = std::max(steps_.Height() * 2 / 5, 1);
    sprite_ = ScaledSprite(manager_, *stock_.balloon,
                           height * stock_.balloon->GetWidth() / std::max(stock_.balloon->GetHeight(), 1), height);
    const int side = std::min(over_.Width(), over_.Height());
    for (const COLORREF color : {RGB(224, 60, 48), RGB(40, 150, 90), RGB(50, 90, 210)}) {
        discs_.push_back(Disc(manager_, side / 2, side / 32, color));
        if (!discs_.back()) {
            return false;
        }
    }
    group_.reset(manager_.CreateAdvSurface(side, side, 1));
    return from_ && to_ && sprite_ && group_ && group_->GetAlphaChannel() && MakeRing();
}

bool BlendingPage::DrawStill() {
    if (!MakeStores()) {
        return false;
    }
    DrawHeader(L"colour, plane and key together");
    table_ = DrawMovingPanel(layout_.Rect(24, 98, 590, 426), L"Soft shadows",
                             L"MakeMask, Expand, Blur; drawn with AlphaColorBlt");
    fade_ =
        DrawMovingPanel(layout_.Rect(610, 98, 1000, 426), L"Cross-fade", L"AlphaConstBltEx between two photographs");
    steps_ = DrawMovingPanel(layout_.Rect(24, 446, 330, 744), L"Keyed fades", L"AlphaConstTransBlt, in steps");
    over_ = DrawMovingPanel(layout_.Rect(350, 446, 714, 744), L"Composites over composites",
                            L"planes on both sides, then over the checks");
    cuts_ = DrawMovingPanel(layout_.Rect(734, 446, 1000, 744), L"Cut and scaled", L"Subtract, TressHold, StretchBlt");
    FillGradient(*still_, table_, RGB(236, 228, 212), RGB(206, 190, 160));
    CoverWith(*still_, steps_, stock_.Photo(1));
    DrawChecks(*still_, over_, layout_.Length(14));
    CoverWith(*still_, cuts_, stock_.Photo(4));
    KeepStill();
    screen_ = Around(*surface_);
    return MakeShapes();
}

void BlendingPage::DrawMoving(double seconds) {
    DrawShadows(seconds);
    const int alpha = Rounded(127.5 - 127.5 * std::cos(seconds * 0.8 + 1.2));
    surface_->AlphaConstBltEx(fade_.left, fade_.top, *to_, alpha, nullptr, from_.get(), &fade_);
    DrawFades(seconds);
    DrawGroup(seconds);
    DrawCuts(seconds);
}

// The higher a thing floats, the farther away its shadow falls.
void BlendingPage::DrawShadows(double seconds) {
    for (std::size_t i = 0; i < floating_.size(); ++i) {
        Floating& floating = floating_[i];
        const double height = layout_.Length(14) * (1.4 + std::sin(seconds * 1.1 + static_cast<double>(i) * 2));
        const int x =
            table_.left + table_.Width() * (2 * static_cast<int>(i) + 1) / 4 - floating.sprite->GetWidth() / 2;
        const int y = table_.top + (table_.Height() - floating.sprite->GetHeight()) / 2;
        screen_->AlphaColorBlt(x - floating.reach + Rounded(height), y - floating.reach + Rounded(height),
                               RGB(12, 10, 24), *floating.shadow, nullptr, &table_);
        screen_->Blt(x, y - Rounded(height / 2), *floating.sprite, nullptr, &table_);
    }
}

void BlendingPage::DrawFades(double seconds) {
    constexpr int columns = 4, rows = 2;
    for (int i = 0; i < columns * rows; ++i) {
        const int alpha = Rounded(127.5 + 127.5 * std::sin(seconds * 1.3 - i * circle / (columns * rows)));
        const int x = steps_.left + steps_.Width() * (2 * (i % columns) + 1) / (2 * columns) - sprite_->GetWidth() / 2;
        const int y = steps_.top + steps_.Height() * (2 * (i / columns) + 1) / (2 * rows) - sprite_->GetHeight() / 2;
        surface_->AlphaConstTransBlt(x, y, *sprite_, alpha, spriteKey, nullptr, &steps_);
    }
}

// The discs meet on a composite that is transparent itself; it goes over the checks as one.
void BlendingPage::DrawGroup(double seconds) {
    group_->FillColor(nullptr, 0, nullptr);
    group_->GetAlphaChannel()->Fill(nullptr, 0, nullptr);
    const int side = group_->GetWidth();
    for (std::size_t i = 0; i < discs_.size(); ++i) {
        const double angle = seconds * 0.7 + static_cast<double>(i) * circle / 3;
        const double reach = side * (0.17 + 0.05 * std::sin(seconds * 1.7));
        const int corner = (side - discs_[i]->GetWidth()) / 2;
        group_->AlphaConstBlt(corner + Rounded(reach * std::cos(angle)), corner + Rounded(reach * std::sin(angle)),
                              *discs_[i], 208, nullptr, nullptr);
    }
    const int left = over_.left + (over_.Width() - side) / 2, top = over_.top + (over_.Height() - side) / 2;
    screen_->Blt(left, top, *group_, nullptr, &over_);
}

void BlendingPage::DrawCuts(double seconds) {
    const int side = ring_->GetWidth();
    screen_->AlphaColorBlt(cuts_.left + (cuts_.Width() - side) / 2, cuts_.top + (cuts_.Height() - side) / 2,
                           RGB(255, 250, 240), *ring_, nullptr, &cuts_);
    const double share = 0.30 + 0.12 * std::sin(seconds * 1.4);
    const int half = std::max(Rounded(side * share), 1);
    const CPoint middle = cuts_.CenterPoint();
    CRect place(middle.x - half, middle.y - half, middle.x + half, middle.y + half);
    screen_->StretchBlt(&place, *group_, nullptr, &cuts_);
}

}   // namespace

std::unique_ptr<Page> MakeBlendingPage(const PageSetup& setup) {
    auto page = std::make_unique<BlendingPage>(setup);
    return page->DrawStill() ? std::move(page) : nullptr;
}

}   // namespace rastel::showcase

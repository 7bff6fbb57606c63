// Text, smooth lines, drawings of GDI+ and icons.
#include <algorithm>
#include <cmath>
#include <filesystem>

#include "examples/showcase/composites.h"
#include "examples/showcase/page.h"
#include "examples/showcase/paint.h"
#include "rastel/platform/gdiplus.h"

namespace rastel::showcase {

namespace {

constexpr double circle = 2 * 3.14159265358979323846;

struct FontStyle {
    int height;
    int weight = FW_NORMAL;
    BYTE isItalic = FALSE;
    BYTE isUnderlined = FALSE;
};

// The renderer owns the font.
void SetFont(CTextRender& render, const FontStyle& style) {
    render.SetFont(
        ::CreateFontW(-style.height, 0, 0, 0, style.weight, style.isItalic, style.isUnderlined, FALSE, ANSI_CHARSET,
                      OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, DEFAULT_PITCH, L"Arial"),
        1);
}

// An icon's image with its own transparency. Null: there is no such image.
Composite IconOf(CDisplayManager& manager, HMODULE module, const wchar_t* name, int side) {
    winext::CDibSection image;
    if (!image.LoadIconImage(module, name, side, side, 32)) {
        return nullptr;
    }
    const std::unique_ptr<Gdiplus::Bitmap> bitmap(image.CreateBitmap());
    Composite icon(manager.CreateAdvSurface(side, side, 1));
    return bitmap && icon && icon->SetBitmap(*bitmap) ? std::move(icon) : nullptr;
}

class TextPage : public Page {
public:
    explicit TextPage(const PageSetup& setup) : Page(setup) {}

    bool DrawStill();

private:
    void DrawMoving(double seconds) override;
    void DrawLines(const CRect& area);
    void DrawBanner(double seconds);
    void DrawFan(double seconds);
    void DrawGdiplus(double seconds);
    void DrawIcons(const CRect& area);

    CTextRender render_;
    Composite screen_, stillScreen_;   // around the page's surfaces
    CRect photo_, fan_, drawing_;
    Composite banner_, canvas_;
};

bool TextPage::DrawStill() {
    if (!MakeStores()) {
        return false;
    }
    DrawHeader(L"text, lines, drawings and icons");
    const CRect lines = DrawPanel(layout_.Rect(24, 98, 500, 426), L"Text", L"CTextRender: Draw and DrawTextW");
    photo_ = DrawMovingPanel(layout_.Rect(520, 98, 1000, 426), L"Text with a plane",
                             L"drawn on a clear composite, with the shadow that its plane throws");
    fan_ = DrawMovingPanel(layout_.Rect(24, 446, 330, 744), L"Smooth lines", L"AALine");
    drawing_ = DrawMovingPanel(layout_.Rect(350, 446, 714, 744), L"GDI+ on a composite",
                               L"CSurfaceGraphics: the plane is its alpha");
    const CRect icons = DrawPanel(layout_.Rect(734, 446, 1000, 744), L"Icons", L"LoadIconImage: file and program");
    CoverWith(*still_, photo_, stock_.Photo(3));
    DrawChecks(*still_, drawing_, layout_.Length(14));
    FillGradient(*still_, fan_, RGB(20, 26, 44), RGB(44, 58, 92));
    stillScreen_ = Around(*still_);
    DrawLines(lines);
    DrawIcons(icons);
    KeepStill();
    screen_ = Around(*surface_);
    banner_.reset(manager_.CreateAdvSurface(std::max(photo_.Width(), 1), std::max(photo_.Height(), 1), 1));
    canvas_.reset(manager_.CreateAdvSurface(std::max(drawing_.Width(), 1), std::max(drawing_.Height(), 1), 1));
    return banner_ && banner_->GetAlphaChannel() && canvas_ && canvas_->GetAlphaChannel();
}

void TextPage::DrawLines(const CRect& area) {
    CRect clip(area);
    render_.SetClipRect(clip);
    int y = area.top;
    for (const int size : {10, 12, 14, 18, 24, 34}) {
        const int height = layout_.Length(size);
        SetFont(render_, {height});
        render_.SetColor(ink::text);
        y += height * 5 / 4;
        render_.Draw(*stillScreen_, area.left, y,
                     size < 20 ? L"The quick brown fox jumps over the lazy dog" : L"The quick brown fox", -1);
    }
    struct Line {
        UINT format;
        FontStyle style;
        COLORREF color;
        const wchar_t* text;
    };
    const int height = layout_.Length(16);
    const Line lines[] = {{DT_LEFT, {height, FW_BOLD}, ink::accent, L"to the left, bold"},
                          {DT_CENTER, {height, FW_NORMAL, TRUE}, RGB(40, 120, 80), L"centred, slanted"},
                          {DT_RIGHT, {height, FW_NORMAL, FALSE, TRUE}, RGB(50, 80, 190), L"to the right, underlined"}};
    y += layout_.Length(8);
    for (const Line& line : lines) {
        SetFont(render_, line.style);
        render_.SetColor(line.color);
        render_.DrawTextW(*stillScreen_, line.text, CRect(area.left, y, area.right, y + height * 3 / 2), line.format);
        y += height * 3 / 2;
    }
    CRect none(0, 0, 0, 0);
    render_.SetClipRect(none);
}

void TextPage::DrawBanner(double seconds) {
    banner_->FillColor(nullptr, 0, nullptr);
    banner_->GetAlphaChannel()->Fill(nullptr, 0, nullptr);
    SetFont(render_, {layout_.Length(52), FW_BOLD});
    const double glow = 0.5 + 0.5 * std::sin(seconds * 1.3);
    render_.SetColor(RGB(255, 236 - static_cast<int>(60 * glow), 214 - static_cast<int>(150 * glow)));
    const CRect whole(0, 0, banner_->GetWidth(), banner_->GetHeight());
    render_.DrawTextW(*banner_, L"straight\rcolours,\rsoft edges", whole, DT_CENTER | DT_VCENTER);

    const int softness = std::clamp(layout_.Length(3), 1, 20);
    const example::Plane shadow(banner_->GetAlphaChannel()->Blur(softness));
    const int away = layout_.Length(5) + static_cast<int>(std::lround(layout_.Length(3) * glow));
    if (shadow) {
        screen_->AlphaColorBlt(photo_.left + away - softness, photo_.top + away - softness, RGB(0, 0, 0), *shadow,
                               nullptr, &photo_);
    }
    screen_->Blt(photo_.left, photo_.top, *banner_, nullptr, &photo_);
}

void TextPage::DrawFan(double seconds) {
    constexpr int rays = 36;
    CSurfaceDC context(*surface_, &fan_);
    const CPoint middle = fan_.CenterPoint();
    const double reach = std::min(fan_.Width(), fan_.Height()) * 0.46;
    for (int i = 0; i < rays; ++i) {
        const double angle = seconds * 0.15 + i * circle / rays;
        const int light = 110 + static_cast<int>(std::lround(60 * std::sin(angle * 3 + seconds)));
        AALine(context, middle.x + reach * 0.2 * std::cos(angle), middle.y + reach * 0.2 * std::sin(angle),
               middle.x + reach * std::cos(angle), middle.y + reach * std::sin(angle), RGB(light, light + 40, 235));
    }
}

void TextPage::DrawGdiplus(double seconds) {
    canvas_->FillColor(nullptr, 0, nullptr);
    canvas_->GetAlphaChannel()->Fill(nullptr, 0, nullptr);
    const auto width = static_cast<float>(canvas_->GetWidth()), height = static_cast<float>(canvas_->GetHeight());
    {
        CSurfaceGraphics graphics(*canvas_, nullptr);
        if (!graphics.GetGraphice()) {
            return;
        }
        graphics->SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
        const Gdiplus::LinearGradientBrush sunset(Gdiplus::PointF(0, 0), Gdiplus::PointF(0, height),
                                                  Gdiplus::Color(230, 255, 196, 64), Gdiplus::Color(90, 226, 60, 80));
        graphics->FillEllipse(&sunset, width * 0.08f, height * 0.06f, width * 0.52f, width * 0.52f);

        Gdiplus::GraphicsPath star;
        Gdiplus::PointF corners[10];
        for (int i = 0; i < 10; ++i) {
            const double angle = i * circle / 10 - circle / 4, reach = i % 2 == 0 ? 1 : 0.42;
            const double radius = reach * width * 0.26;
            corners[i] = Gdiplus::PointF(static_cast<float>(radius * std::cos(angle)),
                                         static_cast<float>(radius * std::sin(angle)));
        }
        star.AddPolygon(corners, 10);
        const Gdiplus::SolidBrush blue(Gdiplus::Color(150, 40, 90, 210));
        const Gdiplus::Pen rim(Gdiplus::Color(255, 24, 40, 90), width * 0.013f);
        graphics->TranslateTransform(width * 0.64f, height * 0.42f);
        graphics->RotateTransform(static_cast<float>(std::fmod(seconds * 20, 360)));
        graphics->FillPath(&blue, &star);
        graphics->DrawPath(&rim, &star);
        graphics->ResetTransform();

        const Gdiplus::Pen wave(Gdiplus::Color(200, 20, 130, 90), height * 0.02f);
        const auto swing = static_cast<float>(height * 0.18 * std::sin(seconds + 1));
        graphics->DrawBezier(&wave, Gdiplus::PointF(width * 0.05f, height * 0.75f),
                             Gdiplus::PointF(width * 0.35f, height * 0.75f - swing),
                             Gdiplus::PointF(width * 0.65f, height * 0.75f + swing),
                             Gdiplus::PointF(width * 0.95f, height * 0.75f));
        const Gdiplus::Font font(L"Arial", height * 0.1f, Gdiplus::FontStyleRegular, Gdiplus::UnitPixel);
        const Gdiplus::SolidBrush ink(Gdiplus::Color(255, 36, 43, 58));
        graphics->DrawString(L"straight alpha", -1, &font, Gdiplus::PointF(width * 0.2f, height * 0.82f), &ink);
    }   // here the drawing reaches the composite
    screen_->Blt(drawing_.left, drawing_.top, *canvas_, nullptr, &drawing_);
}

void TextPage::DrawIcons(const CRect& area) {
    const std::filesystem::path folder(stock_.folder);
    const HMODULE program =
        ::LoadLibraryExW((folder / "icons.dll").wstring().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const std::wstring file = (folder / "rastel.ico").wstring();
    const int row = area.Height() / 2;
    for (int i = 0; i < 2; ++i) {
        int x = area.left;
        const int y = area.top + i * row;
        WriteText(*still_, x, y, i == 0 ? L"rastel.ico" : L"icons.dll", {layout_.Length(12), FW_NORMAL, ink::quiet},
                  area);
        for (const int side : {16, 32, 48, 64}) {
            const Composite icon = i == 0    ? IconOf(manager_, nullptr, file.c_str(), side)
                                   : program ? IconOf(manager_, program, L"RASTEL", side)
                                             : nullptr;
            if (icon) {
                CRect clip(area);
                stillScreen_->Blt(x, y + layout_.Length(26), *icon, nullptr, &clip);
            }
            x += side + layout_.Length(12);
        }
    }
    if (program) {
        ::FreeLibrary(program);
    }
}

void TextPage::DrawMoving(double seconds) {
    DrawBanner(seconds);
    DrawFan(seconds);
    DrawGdiplus(seconds);
}

}   // namespace

std::unique_ptr<Page> MakeTextPage(const PageSetup& setup) {
    auto page = std::make_unique<TextPage>(setup);
    return page->DrawStill() ? std::move(page) : nullptr;
}

}   // namespace rastel::showcase

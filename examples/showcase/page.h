// What the pages of the showcase share: a still part that is drawn once, and what moves on it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "examples/showcase/layout.h"
#include "examples/showcase/stock.h"

namespace rastel::showcase {

// What a page is made from. The manager and the stock must outlive it.
struct PageSetup {
    CDisplayManager& manager;
    const Stock& stock;
    SIZE size;
    HWND window;            // that the page will be shown in
    std::wstring display;   // the text in the page's corner
};

class Page {
public:
    virtual ~Page() = default;

    void Draw(double seconds);   // the page as it is after that time
    CSurface& Surface() { return *surface_; }

protected:
    explicit Page(const PageSetup& setup);

    bool MakeStores();   // false: there is no memory
    void DrawHeader(const wchar_t* subtitle);
    CRect DrawPanel(const CRect& rect, const wchar_t* title, const wchar_t* subtitle);   // the area inside
    CRect DrawMovingPanel(const CRect& rect, const wchar_t* title, const wchar_t* subtitle);
    void KeepStill() { surface_->CopyBlt(0, 0, *still_, nullptr, nullptr); }   // ends the still part

    CDisplayManager& manager_;
    const Stock& stock_;
    const Layout layout_;
    example::Surface still_, surface_;
    std::vector<CRect> moving_;   // where things move: drawn anew each time from the still part

private:
    virtual void DrawMoving(double seconds) = 0;

    const SIZE size_;
    const std::wstring display_;
};

// Null: there is no memory.
std::unique_ptr<Page> MakeSpritesPage(const PageSetup& setup);
std::unique_ptr<Page> MakeBlendingPage(const PageSetup& setup);
std::unique_ptr<Page> MakeTurningPage(const PageSetup& setup);
std::unique_ptr<Page> MakeTextPage(const PageSetup& setup);
std::unique_ptr<Page> MakeSpacePage(const PageSetup& setup);

struct PageEntry {
    const char* name;
    std::unique_ptr<Page> (*make)(const PageSetup& setup);
};
inline constexpr PageEntry pages[] = {{"sprites", MakeSpritesPage},
                                      {"blending", MakeBlendingPage},
                                      {"turning", MakeTurningPage},
                                      {"text", MakeTextPage},
                                      {"space", MakeSpacePage}};

}   // namespace rastel::showcase

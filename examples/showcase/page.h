// The showcase's one page: a still part that is drawn once, and what moves on it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "examples/showcase/layout.h"
#include "examples/showcase/stock.h"

namespace rastel::showcase {

class Page {
public:
    // The stock and the manager must outlive the page. `display` is the text in its corner. Null: there is no memory.
    static std::unique_ptr<Page> Create(CDisplayManager& manager, const Stock& stock, const SIZE& size,
                                        const std::wstring& display);

    void Draw(double seconds);   // the page as it is after that time
    CSurface& Surface() { return *surface_; }

private:
    struct Balloon {
        example::Surface sprite;
        double start, speed, height, swing;   // shares of the area; the speed is for each second
    };

    Page(CDisplayManager& manager, const Stock& stock, const SIZE& size);

    bool MakeStores(const SIZE& size);
    void DrawStill(const std::wstring& display);
    CRect DrawPanel(const CRect& rect, const wchar_t* title, const wchar_t* subtitle);
    void DrawBalloons(double seconds);
    void DrawCard(double seconds);

    CDisplayManager& manager_;
    const Stock& stock_;
    Layout layout_;
    example::Surface still_, surface_;
    std::vector<Balloon> balloons_;
    example::Surface cup_;
    CRect sky_, table_;   // where things move
};

}   // namespace rastel::showcase

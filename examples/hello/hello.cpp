// Composes a small picture and shows it: on the screen, or in the window whose handle is the argument.
#include <cstdio>
#include <cstdlib>

#include "rastel/rastel.h"

int main(int argc, char** argv) {
    HWND window = argc > 1 ? reinterpret_cast<HWND>(std::strtoull(argv[1], nullptr, 0)) : nullptr;

    CDisplayManager manager;
    manager.Initialize(window);
    CPrimarySurface* screen = manager.CreatePrimarySurface();   // measures this display at the first start
    CSurface* page = manager.CreateSurface(320, 200);
    int shown = 0;
    if (screen != nullptr && page != nullptr) {
        CRect panel(20, 20, 300, 180), shade(32, 32, 312, 192);
        page->FillColor(nullptr, RGB(58, 110, 140), nullptr);
        page->ShadowBlt(&shade, 40);
        page->FillColor(&panel, RGB(250, 244, 230), nullptr);
        {
            CSurfaceDC dc(*page, &panel);
            SetBkMode(dc, TRANSPARENT);
            TextOutW(dc, 100, 90, L"Hello from Rastel", 17);
        }
        screen->SetWindow(window);
        shown = screen->Blt(0, 0, *page, nullptr);
    }
    if (page != nullptr)
        page->Release();
    if (screen != nullptr)
        screen->Release();
    std::puts(shown ? "shown" : "not shown");
    return shown ? EXIT_SUCCESS : EXIT_FAILURE;
}

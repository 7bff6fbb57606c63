// A host that has nothing but the installed package: it draws through the library and looks at the result.
#include <cstdio>

#include "rastel/rastel.h"

namespace {

// Replaces a step of the library from outside: the class must be a base one can derive from.
class CountingManager : public CDisplayManager {
public:
    void SetProfile(const wchar_t* name, long long value) override {
        ++stored;
        CDisplayManager::SetProfile(name, value);
    }
    int stored = 0;
};

const char* Run() {
    CountingManager manager;
    manager.Initialize(nullptr);
    CPrimarySurface* screen = manager.CreatePrimarySurface();
    CSurface* surface = manager.CreateSurface(5, 3);
    CAlphaChannel* plane = manager.CreateAlphaChannel(5, 3);
    const char* wrong = nullptr;
    if (screen == nullptr || surface == nullptr || plane == nullptr) {
        wrong = "a factory failed";
    } else if (manager.stored == 0) {
        wrong = "the overridden step was not called";
    } else if (!surface->FillColor(nullptr, RGB(0x11, 0x22, 0x33), nullptr)) {
        wrong = "the fill failed";
    } else if (const unsigned char* bits = surface->LockData(); bits == nullptr) {
        wrong = "the lock failed";
    } else {
        const unsigned char* last = bits + 2 * surface->GetPitch() + 4 * 4;
        if (last[0] != 0x33 || last[1] != 0x22 || last[2] != 0x11 || last[3] != 0)
            wrong = "the last pixel is not what was filled in";
        surface->UnlockData();
    }
    if (plane != nullptr)
        plane->Release();
    if (surface != nullptr)
        surface->Release();
    if (screen != nullptr)
        screen->Release();
    if (wrong == nullptr && CSurfaceBase::GetSurfacesAllocated() != 0)
        wrong = "surfaces are left over";
    return wrong;
}

}   // namespace

int main() {
    const char* wrong = Run();
    if (wrong == nullptr) {
        // The one exception that crosses the library's border.
        CDisplayManager first;
        try {
            CDisplayManager second;
            wrong = "a second manager came to life";
        } catch (int) {
        }
    }
    std::puts(wrong == nullptr ? "consumer: all well" : wrong);
    return wrong == nullptr ? 0 : 1;
}

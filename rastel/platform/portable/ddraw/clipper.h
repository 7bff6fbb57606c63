// What limits a blit: the visible part of a window, or a list of rectangles.
#pragma once

#include <mutex>

#include "rastel/platform/portable/com_object.h"
#include "rastel/platform/portable/ddraw.h"
#include "rastel/platform/portable/gdi/region.h"

namespace rastel::platform {

class Clipper final : public IDirectDrawClipper {
public:
    HRESULT QueryInterface(REFIID wanted, void** object) override;
    ULONG AddRef() override { return references_.Add(); }
    ULONG Release() override;

    HRESULT GetClipList(LPRECT within, LPRGNDATA list, LPDWORD bytes) override;
    HRESULT GetHWnd(HWND* window) override;
    HRESULT Initialize(LPDIRECTDRAW, DWORD) override { return DDERR_ALREADYINITIALIZED; }
    HRESULT IsClipListChanged(BOOL* isChanged) override;
    HRESULT SetClipList(LPRGNDATA list, DWORD flags) override;
    HRESULT SetHWnd(DWORD flags, HWND window) override;

    HWND Window() const;

    // On the screen or on the surface. False: it has neither window nor list, or the window is gone.
    bool Visible(Region* region) const;

private:
    ~Clipper() = default;

    ReferenceCount references_;
    mutable std::mutex mutex_;
    HWND window_ = nullptr;
    bool hasList_ = false;
    Region list_;
};

}   // namespace rastel::platform

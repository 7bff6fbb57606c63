// The colours of an 8-bit display as DirectDraw hands them around.
#pragma once

#include <array>
#include <mutex>

#include "rastel/platform/portable/com_object.h"
#include "rastel/platform/portable/ddraw.h"

namespace rastel::platform {

class DevicePalette final : public IDirectDrawPalette {
public:
    explicit DevicePalette(const PALETTEENTRY* entries);

    HRESULT QueryInterface(REFIID wanted, void** object) override;
    ULONG AddRef() override { return references_.Add(); }
    ULONG Release() override;

    HRESULT GetCaps(LPDWORD caps) override;
    HRESULT GetEntries(DWORD flags, DWORD first, DWORD count, LPPALETTEENTRY entries) override;
    HRESULT Initialize(LPDIRECTDRAW, DWORD, LPPALETTEENTRY) override { return DDERR_ALREADYINITIALIZED; }
    HRESULT SetEntries(DWORD flags, DWORD first, DWORD count, LPPALETTEENTRY entries) override;

    void Show(bool isShown);   // whether the display follows it

private:
    ~DevicePalette() = default;
    void PassOn();

    ReferenceCount references_;
    std::mutex mutex_;
    std::array<PALETTEENTRY, 256> entries_{};
    bool isShown_ = false;
};

}   // namespace rastel::platform

// What every object that COM hands out has in common.
#pragma once

#include <atomic>

#include "rastel/platform/portable/com.h"
#include "rastel/platform/portable/screen/display_device.h"

namespace rastel::platform {

// The count of references, one at first.
class ReferenceCount {
public:
    ULONG Add() { return ++count_; }
    ULONG Take() { return --count_; }

private:
    std::atomic<ULONG> count_{1};
};

// The end of every QueryInterface: `found` with a reference of its own, or null and why.
template <class Interface>
HRESULT HandOut(Interface* found, void** object) {
    if (!found) {
        return E_NOINTERFACE;
    }
    found->AddRef();
    *object = found;
    return S_OK;
}

// Whether a test wants this call to fail. Leaves no old pointer in an output.
template <class Output>
bool Fails(const char* call, Output* output) {
    if (output) {
        *output = nullptr;
    }
    return ShouldFail(call);
}

}   // namespace rastel::platform

// Ownership of one reference on a COM interface.
#pragma once

#include <memory>

#include "rastel/platform/ddraw.h"

namespace rastel::platform {

struct ReleaseInterface {
    template <class Interface>
    void operator()(Interface* object) const {
        object->Release();
    }
};

// For the length of a scope.
template <class Interface>
using ComReference = std::unique_ptr<Interface, ReleaseInterface>;

// One more reference on what somebody else holds.
template <class Interface>
ComReference<Interface> Shared(Interface* object) {
    if (object) {
        object->AddRef();
    }
    return ComReference<Interface>(object);
}

// For members that stay plain pointers: gives up what is held, if anything.
template <class Interface>
void Drop(Interface*& held) {
    if (Interface* const object = held) {
        held = nullptr;
        object->Release();
    }
}

// Another interface of the same object, the held one given up. Null where there is none.
template <class Wanted, class Interface>
Wanted* ExchangeInterface(Interface* held, const GUID& wanted) {
    const ComReference<Interface> old(held);
    void* found = nullptr;
    if (old) {
        old->QueryInterface(wanted, &found);
    }
    return static_cast<Wanted*>(found);
}

}   // namespace rastel::platform

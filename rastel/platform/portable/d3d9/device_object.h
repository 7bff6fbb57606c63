// What surfaces, textures, buffers and the swap chain have in common: an interface on a body that the device may keep
// longer than the host does.
#pragma once

#include <memory>
#include <mutex>
#include <new>
#include <utility>

#include "rastel/platform/portable/com_object.h"
#include "rastel/platform/portable/d3d9.h"

namespace rastel::platform::d3d {

// One operation of a device, and of all that belongs to it, at a time.
using Turn = std::unique_lock<std::recursive_mutex>;
Turn TakeTurn(IDirect3DDevice9& device);

// What an interface is on.
struct Body {
    IUnknown* shown = nullptr;   // the interface, while somebody holds a reference on it
};

template <class Interface, class BodyOf>
class DeviceObject : public Interface {
public:
    DeviceObject(IDirect3DDevice9& device, std::shared_ptr<BodyOf> body) : device_(device), body_(std::move(body)) {
        device_.AddRef();
    }

    // The body behind an interface of a device of ours.
    static const std::shared_ptr<BodyOf>& Of(Interface* object) { return static_cast<DeviceObject*>(object)->body_; }

    ULONG AddRef() override { return references_.Add(); }
    ULONG Release() override {
        Turn turn = TakeTurn(device_);
        const ULONG left = references_.Take();
        if (left == 0) {
            body_->shown = nullptr;
            turn.unlock();   // the device may end with this
            delete this;
        }
        return left;
    }
    HRESULT GetDevice(IDirect3DDevice9** device) override {
        if (!device) {
            return D3DERR_INVALIDCALL;
        }
        device_.AddRef();
        *device = &device_;
        return D3D_OK;
    }

protected:
    virtual ~DeviceObject() { device_.Release(); }

    IDirect3DDevice9& device_;   // held
    const std::shared_ptr<BodyOf> body_;

private:
    ReferenceCount references_;
};

// The one interface on a body, with a reference for the caller, so that equal pointers tell the same thing. Null
// without a body or memory.
template <class Object, class BodyOf>
Object* Show(IDirect3DDevice9& device, const std::shared_ptr<BodyOf>& body) {
    if (!body) {
        return nullptr;
    }
    const Turn turn = TakeTurn(device);
    if (body->shown) {
        body->shown->AddRef();
        return static_cast<Object*>(body->shown);
    }
    auto* const made = new (std::nothrow) Object(device, body);
    body->shown = made;
    return made;
}

}   // namespace rastel::platform::d3d

// Owns one reference on a counted object for the length of a scope.
#pragma once

#include <memory>

#include "rastel/surface/ref_count_object.h"

namespace rastel {

struct ReleaseReference {
    void operator()(CRefCountObject* object) const { object->Release(); }
};

template <class Object>
using Reference = std::unique_ptr<Object, ReleaseReference>;

}   // namespace rastel

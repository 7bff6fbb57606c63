#include "rastel/surface/ref_count_object.h"

CRefCountObject::~CRefCountObject() = default;

LONG CRefCountObject::AddRef() {
    return m_RefCount.fetch_add(1, std::memory_order_relaxed) + 1;
}

LONG CRefCountObject::Release() {
    const LONG count = m_RefCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (count == 0) {
        delete this;
    }
    return count;
}

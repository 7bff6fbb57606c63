// Shared lifetime: whoever creates or is handed an object owns one reference and ends it with Release.
#pragma once

#include <atomic>

#include "rastel/platform/types.h"

class RASTEL_API CRefCountObject {
public:
    CRefCountObject() = default;
    CRefCountObject(const CRefCountObject&) = delete;
    CRefCountObject& operator=(const CRefCountObject&) = delete;

    // The order of the virtual operations is binary interface.
    virtual ~CRefCountObject();

    // Both return the new count. At 0 Release has deleted the object. May be called from any thread.
    virtual LONG AddRef();
    virtual LONG Release();

protected:
    std::atomic<LONG> m_RefCount = 1;   // the creator's
};

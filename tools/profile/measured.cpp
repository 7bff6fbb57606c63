#include "tools/profile/measured.h"

#include <cstdio>
#include <new>

namespace rastel::profile {

const char* MeasuredPrimary::ChosenPath() const {
    if (!m_pfnBlt) {
        return "none";
    }
    if (m_pfnBlt == &MeasuredPrimary::BltBuffered) {
        return "BltBuffered";
    }
    if (m_pfnBlt == &MeasuredPrimary::BltNoConvert) {
        return "BltNoConvert";
    }
    return m_pfnBlt == &MeasuredPrimary::BltStretchDIBits ? "StretchDIBits" : "another";
}

CPrimarySurface* ReportingManager::CreatePrimarySurface() {
    auto* const primary = new (std::nothrow) MeasuredPrimary;
    if (primary && !primary->Initialize(this)) {
        primary->Release();
        return nullptr;
    }
    return primary;
}

long long ReportingManager::GetProfile(const wchar_t* name) {
    const long long value = CDisplayManager::GetProfile(name);
    if (value < 0) {
        std::fprintf(stderr, "measuring %ls ...\n", name);
    }
    return value;
}

int ReportingManager::ForgetTimings() {
    const HKEY key = GetProfileKey();
    if (!key) {
        return -1;
    }
    int deleted = 0;
    for (const wchar_t* const name : timingNames) {
        deleted += ::RegDeleteValueW(key, name) == ERROR_SUCCESS;
    }
    ::RegCloseKey(key);
    return deleted;
}

}   // namespace rastel::profile

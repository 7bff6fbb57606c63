// A manager and a primary surface that tell what they do while they start: the measuring has no other window.
#pragma once

#include "rastel/rastel.h"

namespace rastel::profile {

// The names under which the timings are kept, in the order in which they are written.
inline constexpr const wchar_t* timingNames[] = {L"StretchDIBits", L"BltBuffered",  L"BltDirect",    L"BltNoConvert",
                                                 L"FillColor",     L"FillColorGDI", L"FillColorOwn", L"CopyBlt",
                                                 L"CopyBltOwn",    L"CopyBltGDI"};

class MeasuredPrimary : public CPrimarySurface {
public:
    const char* ChosenPath() const;
};

class ReportingManager : public CDisplayManager {
public:
    // Its result is a MeasuredPrimary.
    CPrimarySurface* CreatePrimarySurface() override;

    // A name that has no value yet is about to be measured: a line on standard error says so.
    long long GetProfile(const wchar_t* name) override;

    int ForgetTimings();   // how many values were deleted; -1: the store can't be opened
};

}   // namespace rastel::profile

#include "rastel/platform/portable/screen/device_faults.h"

#include <atomic>
#include <map>
#include <mutex>
#include <string>

#include "rastel/platform/portable/memory_display.h"
#include "rastel/platform/portable/screen/display_device.h"

namespace rastel::platform {

namespace {

std::atomic<std::uint64_t> generation{0};

struct Faults {
    std::mutex mutex;
    std::map<std::string, int, std::less<>> left;
    std::atomic<bool> any{false};   // lets the usual case, no faults at all, pass without a lock
};

// Never destroyed, so that objects that outlive main may still ask.
Faults& TheFaults() {
    static Faults* const faults = new Faults;
    return *faults;
}

}   // namespace

std::uint64_t DeviceSurfaceGeneration() {
    return generation;
}

void LoseDeviceSurfaces() {
    ++generation;
}

void FailDeviceCalls(const char* call, int count) {
    if (call == nullptr) {
        return;
    }
    Faults& faults = TheFaults();
    const std::lock_guard lock(faults.mutex);
    if (count > 0) {
        faults.left[call] = count;
    } else {
        faults.left.erase(call);
    }
    faults.any = !faults.left.empty();
}

bool ShouldFail(const char* call) {
    Faults& faults = TheFaults();
    if (call == nullptr || !faults.any) {
        return false;
    }
    const std::lock_guard lock(faults.mutex);
    const auto found = faults.left.find(std::string_view(call));
    if (found == faults.left.end()) {
        return false;
    }
    if (--found->second == 0) {
        faults.left.erase(found);
        faults.any = !faults.left.empty();
    }
    return true;
}

}   // namespace rastel::platform

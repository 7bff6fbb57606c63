// Prints what Rastel measured on this display, and measures it where nothing is known yet.
#include <cstdio>

#include "rastel/surface/reference.h"
#include "tools/profile/options.h"
#include "tools/profile/report.h"

namespace rastel::profile {

namespace {

constexpr int succeeded = 0, failed = 1, misused = 2;

int Fail(const char* message) {
    std::fprintf(stderr, "rastel-profile: %s\n", message);
    return failed;
}

int Run(const Options& options) {
    ReportingManager manager;
    manager.Initialize(nullptr);
    if (options.measure && manager.ForgetTimings() < 0) {
        return Fail("the stored numbers can't be deleted");
    }
    const Reference<CPrimarySurface> primary(manager.CreatePrimarySurface());
    if (!primary) {
        return Fail("the display can't be presented on");
    }
    PrintReport(manager, static_cast<const MeasuredPrimary&>(*primary));
    return std::fflush(stdout) == 0 ? succeeded : failed;
}

int Start(int count, char** arguments) {
    std::string error;
    const std::optional<Options> options = ReadOptions(count, arguments, error);
    if (options && options->help) {
        std::fputs(usage, stdout);
        return succeeded;
    }
    if (options && options->display && !example::UseMemoryDisplay(*options->display)) {
        error = "this build measures the desktop only, not a display in memory";
    }
    if (!options || !error.empty()) {
        std::fprintf(stderr, "rastel-profile: %s\nTry rastel-profile --help.\n", error.c_str());
        return misused;
    }
    return Run(*options);
}

}   // namespace

}   // namespace rastel::profile

int main(int count, char** arguments) {
    return rastel::profile::Start(count, arguments);
}

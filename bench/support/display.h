// A display manager whose measured timings go to a registry of their own, which ends with it.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "rastel/display/display_manager.h"

namespace rastel::bench {

class Display {
public:
    Display();
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;
    ~Display();

    CDisplayManager& Manager() { return *manager_; }
    const std::string& Profile() const { return profile_; }   // what the library measured when it chose its kernels

private:
    std::filesystem::path registry_;
    std::unique_ptr<CDisplayManager> manager_;
    std::string profile_;
};

}   // namespace rastel::bench

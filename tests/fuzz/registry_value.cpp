// Files of the registry: what is taken for a value is one, and is written as it was read.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "rastel/platform/portable/registry/value_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const std::string_view contents(reinterpret_cast<const char*>(bytes), count);
    if (const auto value = rastel::platform::registry::ParseFile(contents)) {
        const auto written = rastel::platform::registry::FileContents(*value);
        if (!written || *written != contents) {
            std::abort();
        }
    }
    return 0;
}

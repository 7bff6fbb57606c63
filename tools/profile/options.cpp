#include "tools/profile/options.h"

#include "examples/support/options.h"

namespace rastel::profile {

const char usage[] =
    "rastel-profile [options]\n"
    "\n"
    "Prints how fast Rastel presents, copies and fills on this display, what it chose by that, and where the numbers\n"
    "are kept. What has never been measured here is measured first.\n"
    "\n"
    "  --measure                      forget this display's numbers and measure anew\n"
    "  --display memory:WxHxBITS      a display in memory of that size; BITS is 8, 15, 16, 24 or 32\n"
    "  --help                         this text\n";

std::optional<Options> ReadOptions(int count, char** arguments, std::string& error) {
    Options options;
    example::OptionReader reader(count, arguments);
    while (reader.Next()) {
        const std::string name = reader.Text();
        if (reader.IsOption() && name == "--help") {
            options.help = true;
        } else if (reader.IsOption() && name == "--measure") {
            options.measure = true;
        } else if (reader.IsOption() && name == "--display") {
            options.display = example::ParseDisplay(reader.Value().value_or(""));
            if (!options.display) {
                error = std::string("--display needs ") + example::displayForm;
                return std::nullopt;
            }
        } else {
            error = reader.IsOption() ? "unknown option " + name : name + " is no option";
            return std::nullopt;
        }
        if (reader.HasUnusedValue()) {
            error = name + " takes no value";
            return std::nullopt;
        }
    }
    return options;
}

}   // namespace rastel::profile

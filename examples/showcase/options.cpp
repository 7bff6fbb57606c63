#include "examples/showcase/options.h"

#include <algorithm>
#include <iterator>

#include "examples/showcase/page.h"
#include "examples/support/options.h"

namespace rastel::showcase {

const char usage[] =
    "rastel-showcase [options] [picture...]\n"
    "\n"
    "Composes pages out of pictures (PNG, JPEG, BMP; some come along) and presents them: in a window that moves until\n"
    "it is closed, or, without a display, in memory, and writes what the screen shows to a PNG file.\n"
    "\n"
    "  --out FILE                     the PNG file; in memory showcase.png unless given, of a window only if given\n"
    "  --page NAME                    sprites, blending, turning or text; unless given, a window shows them by\n"
    "                                 turns, and what is drawn in memory is the first\n"
    "  --frames N                     stop after N frames; in memory 1 unless given\n"
    "  --display memory:WxHxBITS      present in memory on a screen of that size; BITS is 8, 15, 16, 24 or 32\n"
    "  --help                         this text\n";

std::optional<Options> ReadOptions(int count, char** arguments, std::string& error) {
    Options options;
    example::OptionReader reader(count, arguments);
    while (reader.Next()) {
        const std::string name = reader.Text();
        if (!reader.IsOption()) {
            options.files.push_back(name);
            continue;
        }
        if (name == "--help") {
            options.help = true;
        } else if (name == "--out") {
            options.out = reader.Value();
            if (!options.out || options.out->empty()) {
                error = "--out needs the name of a file";
                return std::nullopt;
            }
        } else if (name == "--frames") {
            constexpr int mostFrames = 1'000'000'000;
            options.frames = example::ParseNumber(reader.Value().value_or(""), 1, mostFrames);
            if (!options.frames) {
                error = "--frames needs a number from 1 to 1000000000";
                return std::nullopt;
            }
        } else if (name == "--page") {
            const std::string wanted = reader.Value().value_or("");
            const auto* const found = std::find_if(std::begin(pages), std::end(pages),
                                                   [&](const PageEntry& page) { return wanted == page.name; });
            if (found == std::end(pages)) {
                error = "--page needs sprites, blending, turning or text";
                return std::nullopt;
            }
            options.page = static_cast<std::size_t>(found - pages);
        } else if (name == "--display") {
            options.display = example::ParseDisplay(reader.Value().value_or(""));
            if (!options.display) {
                error = std::string("--display needs ") + example::displayForm;
                return std::nullopt;
            }
        } else {
            error = "unknown option " + name;
            return std::nullopt;
        }
        if (reader.HasUnusedValue()) {
            error = name + " takes no value";
            return std::nullopt;
        }
    }
    return options;
}

}   // namespace rastel::showcase

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
    "  --page NAME                    sprites, blending, turning, text or space; unless given, a window\n"
    "                                 shows them by turns, and what is drawn in memory is the first\n"
    "  --path NAME                    present by stretchdibits, buffered or noconvert, not by the fastest\n"
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
                error = "--page needs sprites, blending, turning, text or space";
                return std::nullopt;
            }
            options.page = static_cast<std::size_t>(found - pages);
        } else if (name == "--path") {
            const std::string wanted = reader.Value().value_or("");
            constexpr const char* paths[] = {"stretchdibits", "buffered", "noconvert"};   // in the order of Path
            const auto* const found =
                std::find_if(std::begin(paths), std::end(paths), [&](const char* path) { return wanted == path; });
            if (found == std::end(paths)) {
                error = "--path needs stretchdibits, buffered or noconvert";
                return std::nullopt;
            }
            options.path = static_cast<Path>(found - paths);
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

#include "tools/icons/options.h"

#include "examples/support/options.h"

namespace rastel::icons {

const char usage[] =
    "rastel-icons [options] FILE\n"
    "\n"
    "Lists the images in an icon file or in the icons of a Windows program or library (.ico, .exe, .dll, 32 or 64\n"
    "bits), or writes those of 32 bits a pixel as PNG files.\n"
    "\n"
    "  --extract FOLDER   write the images into the folder, which is made where it is missing;\n"
    "                     files of the same names there are replaced\n"
    "  --help             this text\n"
    "\n"
    "An image without any alpha takes it from the icon's mask, as it is drawn on a desktop.\n"
    "Ends with 0, with 1 where an image or the file can't be read or written, and with 2 for a wrong command line.\n";

std::optional<Options> ReadOptions(int count, char** arguments, std::string& error) {
    Options options;
    example::OptionReader reader(count, arguments);
    while (reader.Next()) {
        const std::string text = reader.Text();
        if (!reader.IsOption()) {
            if (!options.file.empty()) {
                error = "only one file at a time";
                return std::nullopt;
            }
            options.file = text;
        } else if (text == "--help") {
            options.help = true;
        } else if (text == "--extract") {
            options.folder = reader.Value();
            if (!options.folder || options.folder->empty()) {
                error = "--extract needs a folder";
                return std::nullopt;
            }
        } else {
            error = "unknown option " + text;
            return std::nullopt;
        }
        if (reader.HasUnusedValue()) {
            error = text + " takes no value";
            return std::nullopt;
        }
    }
    if (options.file.empty() && !options.help) {
        error = "no file";
        return std::nullopt;
    }
    return options;
}

}   // namespace rastel::icons

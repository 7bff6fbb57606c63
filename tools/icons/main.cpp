// Lists and extracts the icons of icon files and of Windows programs.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <set>
#include <system_error>

#include "examples/support/picture_codecs.h"
#include "tools/icons/icon_file.h"
#include "tools/icons/options.h"

namespace rastel::icons {

namespace {

constexpr int succeeded = 0, failed = 1, misused = 2;

int Fail(const std::string& message) {
    std::fprintf(stderr, "rastel-icons: %s\n", message.c_str());
    return failed;
}

std::string SizeOf(const IconImage& image) {
    return std::to_string(image.entry.width) + "x" + std::to_string(image.entry.height);
}

const char* FormName(IconImage::Form form) {
    return form == IconImage::Form::Pixels ? "pixels" : form == IconImage::Form::Png ? "png" : "broken";
}

int List(const IconFile& file) {
    std::printf("%-16s %-9s %4s  %s\n", "icon", "size", "bits", "form");
    for (const IconImage& image : file.Images()) {
        std::printf("%-16s %-9s %4d  %s\n", image.group.empty() ? "-" : image.group.c_str(), SizeOf(image).c_str(),
                    image.bits, FormName(image.form));
    }
    return std::fflush(stdout) == 0 ? succeeded : Fail("the list can't be written");
}

// A part of a file's name that means nothing to any system.
std::string Tame(std::string text) {
    constexpr std::size_t mostBytes = 64;
    text.resize(std::min(text.size(), mostBytes));
    for (char& unit : text) {
        const bool isPlain = std::isalnum(static_cast<unsigned char>(unit)) && static_cast<unsigned char>(unit) < 0x80;
        if (!isPlain && unit != '-' && unit != '_') {
            unit = '_';
        }
    }
    return text;
}

std::filesystem::path FreeName(const std::filesystem::path& folder, const std::string& stem,
                               std::set<std::string>& taken) {
    std::string name = stem;
    for (int number = 2; !taken.insert(name).second; ++number) {
        name = stem + "-" + std::to_string(number);
    }
    return folder / (name + ".png");
}

bool Write(const std::filesystem::path& path, std::span<const BYTE> bytes) {
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    return !stream.fail();
}

int Extract(const IconFile& file, const Options& options) {
    std::error_code failure;
    std::filesystem::create_directories(*options.folder, failure);
    if (!std::filesystem::is_directory(*options.folder, failure)) {
        return Fail(*options.folder + ": the folder can't be made");
    }
    const std::string stem = Tame(std::filesystem::path(options.file).stem().string());
    int result = succeeded, written = 0;
    std::set<std::string> taken;
    for (const IconImage& image : file.Images()) {
        if (image.bits != 32) {
            continue;
        }
        const std::string what = (image.group.empty() ? "" : "icon " + image.group + ", ") + SizeOf(image);
        const bool isPng = image.form == IconImage::Form::Png;
        std::vector<BYTE> png(image.bytes.begin(), image.bytes.end());
        const std::optional<example::Picture> picture = isPng ? std::nullopt : PictureOf(image);
        if (!isPng && (!picture || !example::EncodePng(*picture, png))) {
            result = Fail(options.file + ": the image " + what + " is broken");
            continue;
        }
        const std::string group = image.group.empty() ? "" : "-" + Tame(image.group);
        const std::filesystem::path path = FreeName(*options.folder, stem + group + "-" + SizeOf(image), taken);
        if (!Write(path, png)) {
            return Fail(path.string() + ": the file can't be written");
        }
        std::printf("%s\n", path.string().c_str());
        ++written;
    }
    if (written == 0 && result == succeeded) {
        return Fail(options.file + ": none of its icons has 32 bits a pixel");
    }
    return result;
}

int Start(int count, char** arguments) {
    std::string error;
    const std::optional<Options> options = ReadOptions(count, arguments, error);
    if (!options) {
        std::fprintf(stderr, "rastel-icons: %s\nTry rastel-icons --help.\n", error.c_str());
        return misused;
    }
    if (options->help) {
        std::fputs(usage, stdout);
        return succeeded;
    }
    const std::unique_ptr<IconFile> file = IconFile::Open(options->file, error);
    if (!file) {
        return Fail(error);
    }
    return options->folder ? Extract(*file, *options) : List(*file);
}

}   // namespace

}   // namespace rastel::icons

int main(int count, char** arguments) try {
    return rastel::icons::Start(count, arguments);
} catch (const std::exception& failure) {
    std::fprintf(stderr, "rastel-icons: %s\n", failure.what());
    return 1;
}

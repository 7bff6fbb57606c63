// All icon images of a file, whichever of the two kinds of files it is.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "examples/support/picture.h"
#include "rastel/image/icon_directory.h"
#include "rastel/image/icon_source.h"

namespace rastel::icons {

struct IconImage {
    enum class Form { Pixels, Png, Broken };

    std::string group;   // of a module: the name or the number of the icon; else empty
    image::IconEntry entry;
    int bits = 0;   // what the image itself says; else what the directory says
    Form form = Form::Broken;
    std::span<const BYTE> bytes;   // from its header on, as far as it may go
};

class IconFile {
public:
    // Null: `error` says why.
    static std::unique_ptr<IconFile> Open(const std::string& path, std::string& error);
    ~IconFile();
    IconFile(const IconFile&) = delete;
    IconFile& operator=(const IconFile&) = delete;

    const std::vector<IconImage>& Images() const { return images_; }

private:
    IconFile() = default;
    void AddGroup(const wchar_t* name);
    void AddFile();
    void Add(std::string group, const image::IconEntry& entry, std::span<const BYTE> bytes);

    HMODULE module_ = nullptr;
    std::unique_ptr<image::FileContents> contents_;
    std::vector<IconImage> images_;
};

// Nothing for an image that is not pixels of 32 bits.
std::optional<example::Picture> PictureOf(const IconImage& image);

}   // namespace rastel::icons

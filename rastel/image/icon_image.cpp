// The image of an icon as a section.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "rastel/image/dib_section.h"
#include "rastel/image/icon_directory.h"
#include "rastel/image/icon_source.h"

namespace winext {

namespace {

using rastel::image::FileContents;
using rastel::image::IconDirectory;
using rastel::image::IconEntry;
using rastel::image::ModuleResource;
using Bytes = std::span<const BYTE>;

constexpr int iconBits = 32;

int CopyImage(CDibSection& target, Bytes image, int width, int height) {
    const std::optional<Bytes> pixels = rastel::image::IconPixels(image, width, height);
    if (!pixels) {
        return 0;
    }
    unsigned char* const bits = target.Create(width, height, iconBits) ? target.GetBits() : nullptr;
    if (bits) {
        const std::int64_t room = std::int64_t{target.GetPitch()} * target.GetHeight();
        std::memcpy(bits, pixels->data(),
                    std::min(pixels->size(), static_cast<std::size_t>(std::max<std::int64_t>(room, 0))));
    }
    return 1;   // without memory for the image as well
}

int LoadFromFile(CDibSection& target, const wchar_t* path, int width, int height) {
    const FileContents file(path);
    const std::optional<IconEntry> entry =
        IconDirectory(IconDirectory::Kind::File, file.Bytes()).Find(width, height, iconBits);
    if (!entry || entry->location > file.Bytes().size()) {
        return 0;
    }
    return CopyImage(target, file.Bytes().subspan(entry->location), width, height);
}

int LoadFromModule(CDibSection& target, HMODULE module, const wchar_t* name, int width, int height) {
    std::optional<IconEntry> entry;
    {
        const ModuleResource group(module, name, rastel::image::IconGroupType());
        entry = IconDirectory(IconDirectory::Kind::Group, group.Bytes()).Find(width, height, iconBits);
    }
    if (!entry) {
        return 0;
    }
    const ModuleResource icon(module, rastel::image::ResourceNumber(entry->location), rastel::image::IconType());
    return CopyImage(target, icon.Bytes(), width, height);
}

}   // namespace

int CDibSection::LoadIconImage(HMODULE hModule, const wchar_t* pName, int width, int height, int bitsPerPixel) {
    if (bitsPerPixel != iconBits) {
        return 0;
    }
    return hModule ? LoadFromModule(*this, hModule, pName, width, height) : LoadFromFile(*this, pName, width, height);
}

}   // namespace winext

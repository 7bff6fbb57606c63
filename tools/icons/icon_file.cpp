#include "tools/icons/icon_file.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "rastel/platform/framework/characters.h"
#include "rastel/platform/kernel.h"

namespace rastel::icons {

namespace {

using image::IconDirectory;
using Bytes = std::span<const BYTE>;

constexpr BYTE pngSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr std::size_t mostImages = 20000;   // of a file that says that it has more, they are enough

bool IsPng(Bytes bytes) {
    return bytes.size() >= sizeof(pngSignature) &&
           std::equal(std::begin(pngSignature), std::end(pngSignature), bytes.begin());
}

std::string Printable(const wchar_t* name) {
    if (image::IsResourceNumber(name)) {
        return std::to_string(reinterpret_cast<ULONG_PTR>(name));
    }
    std::string text;
    for (; *name; ++name) {
        const auto code = static_cast<char32_t>(*name);
        const bool isPlain =
            code >= 0x20 && !(code >= 0x7F && code < 0xA0) && code <= 0xFFFD && !platform::IsSurrogate(code);
        platform::AppendUtf8(text, isPlain ? code : U'?');
    }
    return text;
}

// The conversion of a path asks the locale. Nothing for a name that is no text.
std::optional<std::wstring> WideName(const std::filesystem::path& path) try {
    const std::u8string utf8 = path.u8string();
    std::string_view rest(reinterpret_cast<const char*>(utf8.data()), utf8.size());
    std::wstring name;
    while (!rest.empty()) {
        char32_t code = 0;
        if (!platform::TakeUtf8(rest, code)) {
            return std::nullopt;
        }
        platform::AppendWide(name, code);
    }
    return name;
} catch (const std::system_error&) {
    return std::nullopt;
}

BOOL CALLBACK Collect(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR names) {
    auto& collected = *reinterpret_cast<std::vector<std::pair<DWORD, std::wstring>>*>(names);
    const bool isNumber = image::IsResourceNumber(name);
    collected.emplace_back(isNumber ? static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(name)) : 0,
                           isNumber ? std::wstring() : std::wstring(name));
    return collected.size() < mostImages;
}

}   // namespace

std::unique_ptr<IconFile> IconFile::Open(const std::string& path, std::string& error) {
    std::error_code failure;
    const std::filesystem::path absolute = std::filesystem::absolute(path, failure);
    if (failure || !std::filesystem::exists(absolute, failure)) {
        error = path + ": there is no such file";
        return nullptr;
    }
    if (!std::filesystem::is_regular_file(absolute, failure)) {
        error = path + ": this is no file";
        return nullptr;
    }
    const std::optional<std::wstring> name = WideName(absolute);
    if (!name) {
        error = path + ": the name is no text in UTF-8";
        return nullptr;
    }

    std::unique_ptr<IconFile> file(new IconFile);
    file->module_ = ::LoadLibraryExW(name->c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (file->module_) {
        std::vector<std::pair<DWORD, std::wstring>> groups;
        ::EnumResourceNamesW(file->module_, image::IconGroupType(), Collect, reinterpret_cast<LONG_PTR>(&groups));
        for (const auto& [number, text] : groups) {
            file->AddGroup(text.empty() ? image::ResourceNumber(number) : text.c_str());
        }
    } else {
        file->contents_ = std::make_unique<image::FileContents>(name->c_str());
        const Bytes bytes = file->contents_->Bytes();
        constexpr BYTE iconMagic[] = {0, 0, 1, 0};
        if (!file->contents_->WasRead()) {
            error = path + ": the file is empty, too large, or can't be read";
            return nullptr;
        }
        if (bytes.size() < sizeof(iconMagic) ||
            !std::equal(std::begin(iconMagic), std::end(iconMagic), bytes.begin())) {
            error = path + ": this is neither an icon file nor a Windows program or library";
            return nullptr;
        }
        file->AddFile();
    }
    if (file->images_.empty()) {
        error = path + ": there are no icons in it";
        return nullptr;
    }
    return file;
}

IconFile::~IconFile() {
    if (module_) {
        ::FreeLibrary(module_);
    }
}

void IconFile::AddGroup(const wchar_t* name) {
    const image::ModuleResource group(module_, name, image::IconGroupType());
    const IconDirectory directory(IconDirectory::Kind::Group, group.Bytes());
    for (int i = 0; i < directory.Count(); ++i) {
        const image::IconEntry entry = directory.Entry(i);
        const image::ModuleResource icon(module_, image::ResourceNumber(entry.location), image::IconType());
        Add(Printable(name), entry, icon.Bytes());
    }
}

void IconFile::AddFile() {
    const Bytes bytes = contents_->Bytes();
    const IconDirectory directory(IconDirectory::Kind::File, bytes);
    for (int i = 0; i < directory.Count(); ++i) {
        const image::IconEntry entry = directory.Entry(i);
        Add({}, entry, entry.location <= bytes.size() ? bytes.subspan(entry.location) : Bytes());
    }
}

void IconFile::Add(std::string group, const image::IconEntry& entry, Bytes bytes) {
    if (images_.size() >= mostImages) {
        return;
    }
    IconImage image{std::move(group), entry, entry.bitCount, IconImage::Form::Broken, bytes};
    BITMAPINFOHEADER header = {};
    if (IsPng(bytes)) {
        image.form = IconImage::Form::Png;
        image.bytes = bytes.first(std::min<std::size_t>(bytes.size(), entry.bytes));
    } else if (bytes.size() >= sizeof(header)) {
        std::memcpy(&header, bytes.data(), sizeof(header));
        if (header.biSize >= sizeof(header) && header.biBitCount <= 32) {
            image.bits = header.biBitCount;
            image.form = IconImage::Form::Pixels;
        }
        if (header.biBitCount == 32 && !image::IconPixels(bytes, entry.width, entry.height)) {
            image.form = IconImage::Form::Broken;
        }
    }
    images_.push_back(std::move(image));
}

std::optional<example::Picture> PictureOf(const IconImage& image) {
    const int width = image.entry.width, height = image.entry.height;
    const std::optional<Bytes> pixels = image::IconPixels(image.bytes, width, height);
    if (!pixels) {
        return std::nullopt;
    }
    bool hasAlpha = false;
    for (std::size_t at = 3; at < pixels->size(); at += 4) {
        hasAlpha = hasAlpha || (*pixels)[at] != 0;
    }
    // Behind the pixels, one bit a pixel, 1 where the icon is not. Where it is missing, the icon is everywhere.
    const Bytes mask =
        image.bytes.subspan(static_cast<std::size_t>(pixels->data() - image.bytes.data()) + pixels->size());
    const std::size_t maskPitch = (static_cast<std::size_t>(width) + 31) / 32 * 4;

    std::optional<example::Picture> picture = example::MakePicture(width, height);
    if (!picture) {
        return std::nullopt;
    }
    picture->hasAlpha = true;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto row = static_cast<std::size_t>(height - 1 - y), column = static_cast<std::size_t>(x);
            DWORD pixel;
            std::memcpy(&pixel, pixels->data() + (row * static_cast<std::size_t>(width) + column) * 4, sizeof(pixel));
            const std::size_t maskAt = row * maskPitch + column / 8;
            const bool isMasked = maskAt < mask.size() && (mask[maskAt] >> (7 - column % 8) & 1);
            const DWORD judged = (pixel & 0xFFFFFF) | (isMasked ? 0 : 0xFF000000u);
            picture->Row(y)[x] = hasAlpha ? pixel : judged;
        }
    }
    return picture;
}

}   // namespace rastel::icons

#include "examples/support/picture_file.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <new>
#include <vector>

#include "examples/support/picture_codecs.h"

namespace rastel::example {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

constexpr std::size_t mostFileBytes = 256u << 20;

// Reads to the end rather than asking for a size: a pipe has none.
bool ReadBytes(const std::string& path, std::vector<unsigned char>& bytes, std::string& error) {
    const File file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        error = "can't be opened";
        return false;
    }
    constexpr std::size_t step = 1u << 16;
    for (;;) {
        const std::size_t size = bytes.size();
        bytes.resize(size + step);
        const std::size_t got = std::fread(bytes.data() + size, 1, step, file.get());
        bytes.resize(size + got);
        if (bytes.size() > mostFileBytes) {
            error = "the file is larger than 256 MB";
            return false;
        }
        if (got < step) {
            break;
        }
    }
    if (std::ferror(file.get())) {
        error = "can't be read";
        return false;
    }
    return true;
}

bool StartsWith(Bytes bytes, std::initializer_list<unsigned char> magic) {
    return bytes.size() >= magic.size() && std::equal(magic.begin(), magic.end(), bytes.begin());
}

std::optional<Picture> Decode(Bytes bytes, std::string& error) {
    if (StartsWith(bytes, {0x89, 'P', 'N', 'G'})) {
        return DecodePng(bytes, error);
    }
    if (StartsWith(bytes, {0xFF, 0xD8, 0xFF})) {
        return DecodeJpeg(bytes, error);
    }
    if (StartsWith(bytes, {'B', 'M'})) {
        return DecodeBmp(bytes, error);
    }
    error = bytes.empty() ? "the file is empty" : "is no PNG, JPEG or BMP file";
    return std::nullopt;
}

}   // namespace

std::optional<Picture> ReadPicture(const std::string& path, std::string& error) {
    std::optional<Picture> picture;
    try {
        std::vector<unsigned char> bytes;
        if (ReadBytes(path, bytes, error)) {
            picture = Decode(bytes, error);
        }
    } catch (const std::bad_alloc&) {
        error = "there is not enough memory for it";
    }
    if (!picture) {
        error = path + ": " + error;
        return picture;
    }
    picture->hasAlpha =
        std::any_of(picture->pixels.begin(), picture->pixels.end(), [](DWORD pixel) { return pixel < 0xFF000000u; });
    return picture;
}

bool WritePng(const std::string& path, const Picture& picture, std::string& error) {
    std::vector<unsigned char> bytes;
    if (!EncodePng(picture, bytes)) {
        error = path + ": the picture could not be encoded";
        return false;
    }
    File file(std::fopen(path.c_str(), "wb"));
    if (!file) {
        error = path + ": can't be written";
        return false;
    }
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    // The last bytes leave the buffer here, so closing counts too.
    if (std::fclose(file.release()) != 0 || !written) {
        error = path + ": can't be written in full";
        return false;
    }
    return true;
}

}   // namespace rastel::example

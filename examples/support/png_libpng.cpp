// PNG through the library's simplified interface, which keeps its own errors and needs no long jumps.
#include <png.h>

#include "examples/support/picture_codecs.h"

namespace rastel::example {

namespace {

struct PngImage {
    png_image image{};
    PngImage() { image.version = PNG_IMAGE_VERSION; }
    ~PngImage() { png_image_free(&image); }
    PngImage(const PngImage&) = delete;
    PngImage& operator=(const PngImage&) = delete;
};

std::string Complaint(const png_image& image) {
    const std::string message = image.message;
    return message.empty() ? "the PNG data are broken" : "the PNG data are broken (" + message + ")";
}

}   // namespace

std::optional<Picture> DecodePng(Bytes bytes, std::string& error) {
    PngImage png;
    if (!png_image_begin_read_from_memory(&png.image, bytes.data(), bytes.size())) {
        error = Complaint(png.image);
        return std::nullopt;
    }
    std::optional<Picture> picture = MakePicture(png.image.width, png.image.height);
    if (!picture) {
        error = tooLarge;
        return picture;
    }
    png.image.format = PNG_FORMAT_BGRA;
    if (!png_image_finish_read(&png.image, nullptr, picture->pixels.data(), 0, nullptr)) {
        error = Complaint(png.image);
        picture.reset();
    }
    return picture;
}

bool EncodePng(const Picture& picture, std::vector<unsigned char>& bytes) {
    const std::vector<unsigned char> rows = ChannelsOf(picture);
    PngImage png;
    png.image.width = static_cast<png_uint_32>(picture.width);
    png.image.height = static_cast<png_uint_32>(picture.height);
    png.image.format = picture.hasAlpha ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(png.image);
    bytes.resize(size);
    if (!png_image_write_to_memory(&png.image, bytes.data(), &size, 0, rows.data(), 0, nullptr)) {
        return false;
    }
    bytes.resize(size);
    return true;
}

}   // namespace rastel::example

// PNG through libpng. Its errors jump out of its calls: functions that are jumped out of hold plain values only, and
// what they make is owned by their callers.
#include <png.h>

#include <csetjmp>
#include <cstring>

#include "rastel/platform/portable/gdiplus/image_file.h"

namespace rastel::platform::gdip {

namespace {

struct Reader {
    ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }
    png_structp png = nullptr;
    png_infop info = nullptr;
    const unsigned char* next = nullptr;
    std::size_t left = 0;
    bool hasAlpha = false;
    unsigned width = 0, height = 0;
    int passes = 1;
};

void Read(png_structp png, png_bytep target, std::size_t count) {
    auto& reader = *static_cast<Reader*>(png_get_io_ptr(png));
    if (count > reader.left) {
        png_error(png, "cut short");
    }
    std::memcpy(target, reader.next, count);
    reader.next += count;
    reader.left -= count;
}

// The library's own would write to standard error.
[[noreturn]] void Leave(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}

void Ignore(png_structp, png_const_charp) {}

bool ReadHeader(Reader& reader) {
    reader.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, Leave, Ignore);
    reader.info = reader.png ? png_create_info_struct(reader.png) : nullptr;
    if (!reader.info) {
        return false;
    }
    if (setjmp(png_jmpbuf(reader.png))) {
        return false;
    }
    png_set_read_fn(reader.png, &reader, Read);
    png_set_user_limits(reader.png, Picture::longestSide, Picture::longestSide);
    png_set_chunk_cache_max(reader.png, 128);
    png_set_chunk_malloc_max(reader.png, 8 << 20);
    png_read_info(reader.png, reader.info);
    reader.width = png_get_image_width(reader.png, reader.info);
    reader.height = png_get_image_height(reader.png, reader.info);
    // Deflate shrinks to about a thousandth at best: a short file that promises more is not worth the memory.
    const std::uint64_t promised = std::uint64_t{png_get_rowbytes(reader.png, reader.info)} * reader.height;
    if (promised / 1100 > reader.left) {
        return false;
    }
    png_set_expand(reader.png);
    png_set_scale_16(reader.png);
    png_set_gray_to_rgb(reader.png);
    png_set_bgr(reader.png);
    reader.passes = png_set_interlace_handling(reader.png);
    png_read_update_info(reader.png, reader.info);
    reader.hasAlpha = (png_get_color_type(reader.png, reader.info) & PNG_COLOR_MASK_ALPHA) != 0;
    return png_get_rowbytes(reader.png, reader.info) == std::size_t{reader.width} * (reader.hasAlpha ? 4 : 3);
}

bool ReadRows(Reader& reader, Picture& picture) {
    if (setjmp(png_jmpbuf(reader.png))) {
        return false;
    }
    for (int pass = 0; pass < reader.passes; ++pass) {
        for (unsigned y = 0; y < reader.height; ++y) {
            png_read_row(reader.png, picture.Row(static_cast<int>(y)), nullptr);
        }
    }
    png_read_end(reader.png, nullptr);
    return true;
}

struct Writer {
    ~Writer() { png_destroy_write_struct(&png, &info); }
    png_structp png = nullptr;
    png_infop info = nullptr;
    std::vector<unsigned char>* bytes = nullptr;
    Picture* picture = nullptr;
    std::vector<DWORD> argb;
};

void Write(png_structp png, png_bytep source, std::size_t count) {
    bool isFull = false;
    try {
        auto& bytes = *static_cast<Writer*>(png_get_io_ptr(png))->bytes;
        bytes.insert(bytes.end(), source, source + count);
    } catch (const std::bad_alloc&) {
        isFull = true;
    }
    if (isFull) {   // out of the handler first: the jump would leave the exception behind
        png_error(png, "no memory");
    }
}

bool WriteRows(Writer& writer) {
    if (setjmp(png_jmpbuf(writer.png))) {
        return false;
    }
    const bool hasAlpha = HasAlpha(writer.picture->Format()) || writer.picture->Format() == PixelFormat8bppIndexed;
    png_set_write_fn(writer.png, &writer, Write, nullptr);
    png_set_IHDR(writer.png, writer.info, static_cast<png_uint_32>(writer.picture->Width()),
                 static_cast<png_uint_32>(writer.picture->Height()), 8,
                 hasAlpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(writer.png, writer.info);
    png_set_bgr(writer.png);
    if (!hasAlpha) {
        png_set_filler(writer.png, 0, PNG_FILLER_AFTER);
    }
    for (int y = 0; y < writer.picture->Height(); ++y) {
        writer.picture->Load(0, y, writer.picture->Width(), writer.argb.data());
        png_write_row(writer.png, reinterpret_cast<png_const_bytep>(writer.argb.data()));
    }
    png_write_end(writer.png, nullptr);
    return true;
}

}   // namespace

std::unique_ptr<Picture> DecodePng(FileBytes bytes) {
    Reader reader;
    reader.next = bytes.data();
    reader.left = bytes.size();
    if (!ReadHeader(reader)) {
        return nullptr;
    }
    auto picture = Picture::Make(static_cast<int>(reader.width), static_cast<int>(reader.height), 0,
                                 reader.hasAlpha ? PixelFormat32bppARGB : PixelFormat24bppRGB, nullptr);
    return picture && ReadRows(reader, *picture) ? std::move(picture) : nullptr;
}

bool EncodePng(Picture& picture, std::vector<unsigned char>* bytes) {
    Writer writer;
    writer.bytes = bytes;
    writer.picture = &picture;
    writer.argb.resize(static_cast<std::size_t>(picture.Width()));
    writer.png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, Leave, Ignore);
    writer.info = writer.png ? png_create_info_struct(writer.png) : nullptr;
    return writer.info && WriteRows(writer);
}

}   // namespace rastel::platform::gdip

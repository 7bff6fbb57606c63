// JPEG through libjpeg. Its errors jump out of its calls: functions that are jumped out of hold plain values only.
#include <cstddef>
#include <cstdio>
// libjpeg's header needs both of the above.
#include <jerror.h>
#include <jpeglib.h>

#include <csetjmp>

#include "rastel/platform/portable/gdiplus/image_file.h"

namespace rastel::platform::gdip {

namespace {

constexpr int mostScans = 200;   // each scan of a progressive file costs a pass over all of it

struct Reader {
    ~Reader() { jpeg_destroy_decompress(&jpeg); }
    jpeg_decompress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg_progress_mgr progress{};
    std::jmp_buf out{};
    unsigned char* row = nullptr;   // of the decoder's components
};

[[noreturn]] void Leave(j_common_ptr jpeg) {
    std::longjmp(static_cast<Reader*>(jpeg->client_data)->out, 1);
}

void Warn(j_common_ptr jpeg, int level) {
    // What is cut short or garbled comes as a warning, with grey in the gaps.
    if (level < 0) {
        const int code = jpeg->err->msg_code;
        if (code == JWRN_JPEG_EOF || code == JWRN_HIT_MARKER || code == JWRN_HUFF_BAD_CODE ||
            code == JWRN_BOGUS_PROGRESSION || code == JWRN_MUST_RESYNC) {
            Leave(jpeg);
        }
    }
}

void Progress(j_common_ptr jpeg) {
    if (jpeg->is_decompressor && reinterpret_cast<j_decompress_ptr>(jpeg)->input_scan_number > mostScans) {
        Leave(jpeg);
    }
}

void Silence(j_common_ptr) {}

bool ReadHeader(Reader& reader, FileBytes bytes) {
    if (setjmp(reader.out)) {
        return false;
    }
    reader.jpeg.err = jpeg_std_error(&reader.errors);
    reader.errors.error_exit = Leave;
    reader.errors.emit_message = Warn;
    reader.errors.output_message = Silence;
    reader.jpeg.client_data = &reader;
    jpeg_create_decompress(&reader.jpeg);
    reader.jpeg.client_data = &reader;
    reader.progress.progress_monitor = Progress;
    reader.jpeg.progress = &reader.progress;
    reader.jpeg.mem->max_memory_to_use = 1L << 30;
    jpeg_mem_src(&reader.jpeg, bytes.data(), static_cast<unsigned long>(bytes.size()));
    if (jpeg_read_header(&reader.jpeg, TRUE) != JPEG_HEADER_OK) {
        return false;
    }
    // A block of 8 x 8 takes a bit at least, and the components are at most 4 times 4 to one.
    const std::uint64_t pixels = std::uint64_t{reader.jpeg.image_width} * reader.jpeg.image_height;
    if (pixels / (8 * 64 * 16) > bytes.size()) {
        return false;
    }
    const bool isInk = reader.jpeg.jpeg_color_space == JCS_CMYK || reader.jpeg.jpeg_color_space == JCS_YCCK;
    reader.jpeg.out_color_space = isInk ? JCS_CMYK : JCS_RGB;
    jpeg_start_decompress(&reader.jpeg);
    return reader.jpeg.output_components == (isInk ? 4 : 3);
}

bool ReadRows(Reader& reader, Picture& picture) {
    if (setjmp(reader.out)) {
        return false;
    }
    const bool isInk = reader.jpeg.out_color_space == JCS_CMYK;
    const bool isInverted = reader.jpeg.saw_Adobe_marker;
    const unsigned width = reader.jpeg.output_width;
    while (reader.jpeg.output_scanline < reader.jpeg.output_height) {
        unsigned char* target = picture.Row(static_cast<int>(reader.jpeg.output_scanline));
        jpeg_read_scanlines(&reader.jpeg, &reader.row, 1);
        const unsigned char* source = reader.row;
        for (unsigned x = 0; x < width; ++x, target += 3, source += isInk ? 4 : 3) {
            for (int channel = 0; channel < 3; ++channel) {
                int value = source[channel];
                if (isInk) {
                    const int light = isInverted ? value : 255 - value,
                              black = isInverted ? source[3] : 255 - source[3];
                    value = light * black / 255;
                }
                target[2 - channel] = static_cast<unsigned char>(value);
            }
        }
    }
    jpeg_finish_decompress(&reader.jpeg);
    return true;
}

}   // namespace

std::unique_ptr<Picture> DecodeJpeg(FileBytes bytes) {
    const auto reader = std::make_unique<Reader>();   // jumps leave its members alone, as no register holds them
    if (!ReadHeader(*reader, bytes)) {
        return nullptr;
    }
    auto picture = Picture::Make(static_cast<int>(reader->jpeg.output_width),
                                 static_cast<int>(reader->jpeg.output_height), 0, PixelFormat24bppRGB, nullptr);
    std::vector<unsigned char> row(std::size_t{reader->jpeg.output_width} * 4);
    reader->row = row.data();
    return picture && ReadRows(*reader, *picture) ? std::move(picture) : nullptr;
}

}   // namespace rastel::platform::gdip

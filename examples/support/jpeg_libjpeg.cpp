#include <csetjmp>
#include <cstdio>

#include <jerror.h>
#include <jpeglib.h>

#include "examples/support/picture_codecs.h"

namespace rastel::example {

namespace {

struct Decoder {
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors{};
    std::jmp_buf failed;
    char message[JMSG_LENGTH_MAX] = "";

    ~Decoder() { jpeg_destroy_decompress(&info); }
};

[[noreturn]] void Fail(j_common_ptr info) {
    auto& decoder = *static_cast<Decoder*>(info->client_data);
    info->err->format_message(info, decoder.message);
    std::longjmp(decoder.failed, 1);
}

// The library would fill a picture whose end is missing with grey; here that is an error. Lesser oddities pass.
void Warn(j_common_ptr info, int level) {
    if (level < 0 && (info->err->msg_code == JWRN_JPEG_EOF || info->err->msg_code == JWRN_HIT_MARKER)) {
        Fail(info);
    }
}

void Start(Decoder& decoder, Bytes bytes) {
    decoder.info.err = jpeg_std_error(&decoder.errors);
    decoder.errors.error_exit = Fail;
    decoder.errors.emit_message = Warn;
    decoder.info.client_data = &decoder;
    jpeg_create_decompress(&decoder.info);
    jpeg_mem_src(&decoder.info, bytes.data(), static_cast<unsigned long>(bytes.size()));
    jpeg_read_header(&decoder.info, TRUE);
}

// The functions that a failure jumps out of hold nothing that would need a destructor.
bool ReadHeader(Decoder& decoder, Bytes bytes) {
    if (setjmp(decoder.failed)) {
        return false;
    }
    Start(decoder, bytes);
    return true;
}

bool ReadRows(Decoder& decoder, Picture& picture, unsigned char* row) {
    if (setjmp(decoder.failed)) {
        return false;
    }
    jpeg_decompress_struct& info = decoder.info;
    const bool fourInks = info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK;
    info.out_color_space = fourInks ? JCS_CMYK : JCS_RGB;
    jpeg_start_decompress(&info);
    while (info.output_scanline < info.output_height) {
        DWORD* const target = picture.Row(static_cast<int>(info.output_scanline));
        JSAMPROW rows[] = {row};
        jpeg_read_scanlines(&info, rows, 1);
        for (int x = 0; x < picture.width; ++x) {
            const unsigned char* const sample = row + x * (fourInks ? 4 : 3);
            // Inks are stored inverted by the programs that write them: 255 is none.
            const DWORD light = fourInks ? sample[3] : 255;
            target[x] =
                0xFF000000u | sample[0] * light / 255 << 16 | sample[1] * light / 255 << 8 | sample[2] * light / 255;
        }
    }
    jpeg_finish_decompress(&info);
    return true;
}

std::string Complaint(const Decoder& decoder) {
    return std::string("the JPEG data are broken (") + decoder.message + ")";
}

}   // namespace

std::optional<Picture> DecodeJpeg(Bytes bytes, std::string& error) {
    Decoder decoder;
    if (!ReadHeader(decoder, bytes)) {
        error = Complaint(decoder);
        return std::nullopt;
    }
    std::optional<Picture> picture = MakePicture(decoder.info.image_width, decoder.info.image_height);
    if (!picture) {
        error = tooLarge;
        return picture;
    }
    std::vector<unsigned char> row(static_cast<std::size_t>(picture->width) * 4);
    if (!ReadRows(decoder, *picture, row.data())) {
        error = Complaint(decoder);
        picture.reset();
    }
    return picture;
}

}   // namespace rastel::example

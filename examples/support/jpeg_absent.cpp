// In place of the JPEG reader where the build has no library for it.
#include "examples/support/picture_codecs.h"

namespace rastel::example {

std::optional<Picture> DecodeJpeg(Bytes, std::string& error) {
    error = "this build reads no JPEG files, only BMP";
    return std::nullopt;
}

}   // namespace rastel::example

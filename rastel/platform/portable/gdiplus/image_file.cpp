#include "rastel/platform/portable/gdiplus/image_file.h"

#include <algorithm>

namespace rastel::platform::gdip {

std::unique_ptr<Picture> DecodeImage(FileBytes bytes) {
    const auto begins = [&](std::initializer_list<unsigned char> signature) {
        return bytes.size() > signature.size() && std::ranges::equal(signature, bytes.first(signature.size()));
    };
    if (begins({0x89, 'P', 'N', 'G'})) {
        return DecodePng(bytes);
    }
    if (begins({0xFF, 0xD8, 0xFF})) {
        return DecodeJpeg(bytes);
    }
    return begins({'B', 'M'}) ? DecodeBmp(bytes) : nullptr;
}

}   // namespace rastel::platform::gdip

// Image files: decoded out of memory into pictures, encoded into memory.
//
// The bytes may be anything. What is broken, cut short or larger than a picture can be gives null, and nothing leaks.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "rastel/platform/portable/gdiplus/picture.h"

namespace rastel::platform::gdip {

using FileBytes = std::span<const unsigned char>;

// By the content: PNG, JPEG or BMP. May throw std::bad_alloc.
std::unique_ptr<Picture> DecodeImage(FileBytes bytes);

std::unique_ptr<Picture> DecodePng(FileBytes bytes);
std::unique_ptr<Picture> DecodeJpeg(FileBytes bytes);
std::unique_ptr<Picture> DecodeBmp(FileBytes bytes);

bool EncodePng(Picture& picture, std::vector<unsigned char>* bytes);

}   // namespace rastel::platform::gdip

// The formats behind picture_file.h, one function each. Which of them a build has is the build's choice.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "examples/support/picture.h"

namespace rastel::example {

using Bytes = std::span<const unsigned char>;

inline constexpr char tooLarge[] = "the picture is too large, or has no size";
inline constexpr char truncated[] = "the file ends before the picture does";

std::optional<Picture> DecodeBmp(Bytes bytes, std::string& error);
std::optional<Picture> DecodePng(Bytes bytes, std::string& error);
std::optional<Picture> DecodeJpeg(Bytes bytes, std::string& error);

bool EncodePng(const Picture& picture, std::vector<unsigned char>& bytes);

}   // namespace rastel::example

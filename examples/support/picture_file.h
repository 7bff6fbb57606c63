// Picture files: PNG, JPEG and BMP in, PNG out. What is wrong with a file is told in words, never by a crash.
#pragma once

#include <optional>
#include <string>

#include "examples/support/picture.h"

namespace rastel::example {

// The format is told by the first bytes, not by the name. Nothing: `error` says why, with the file's name.
std::optional<Picture> ReadPicture(const std::string& path, std::string& error);

// With alpha where the picture has it.
bool WritePng(const std::string& path, const Picture& picture, std::string& error);

}   // namespace rastel::example

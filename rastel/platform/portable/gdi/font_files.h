// Which font files text is drawn with, for tests and for programs that bring their own fonts.
#pragma once

#include <string>

#include "rastel/platform/export.h"

namespace rastel::platform {

// From now on the fonts in that file are found by their family names. False: not a font that can be used. A CTextRender
// goes on with the characters it has drawn before, until its context has another font or one that measures otherwise.
RASTEL_API bool AddFontFile(const std::string& path);

RASTEL_API void RemoveAddedFontFiles();

// False: as on a machine that has no fonts but the added files. True: as usual.
RASTEL_API void UseSystemFonts(bool use);

// How many glyph pictures were made since the process began; a picture that is kept is not made again.
RASTEL_API unsigned long long DrawnGlyphCount();

}   // namespace rastel::platform

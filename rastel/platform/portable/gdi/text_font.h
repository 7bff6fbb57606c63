// The font that a context draws with.
#pragma once

#include <memory>

#include "rastel/platform/portable/gdi.h"

namespace rastel::platform {

class FontEngine;
class RealizedFont;
struct DeviceContext;

LOGFONTW FontOf(const DeviceContext& context);   // the system font where none was selected

// Own: as the font asks for. The other two are the same font with smooth and with two-valued glyphs.
enum class FontUse { Own, Grey, Mono };

// Remembered by the font object, so that asking again costs next to nothing. Null: no font at all.
std::shared_ptr<RealizedFont> RealizedFontOf(FontEngine& engine, const DeviceContext& context,
                                             FontUse use = FontUse::Own);

// The measures that GetTextMetricsW gives.
TEXTMETRICW TextMetricsOf(const RealizedFont& font);

}   // namespace rastel::platform

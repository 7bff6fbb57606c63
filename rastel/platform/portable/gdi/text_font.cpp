#include "rastel/platform/portable/gdi/text_font.h"

#include <array>
#include <mutex>

#include "rastel/platform/portable/gdi/device_context.h"
#include "rastel/platform/portable/gdi/font_engine.h"

namespace rastel::platform {

namespace {

// What a font object remembers. The engine owns the fonts: it may forget them at any time, and closes them at the end
// of the process, whatever objects are still alive then.
struct KnownFonts {
    std::array<std::weak_ptr<RealizedFont>, 3> byUse;
};

}   // namespace

LOGFONTW FontOf(const DeviceContext& context) {
    if (context.state.font) {
        return context.state.font->font;
    }
    const auto stock = StockObject(SYSTEM_FONT);
    return stock && stock->kind == ObjectKind::Font ? static_cast<const FontObject&>(*stock).font : LOGFONTW{};
}

std::shared_ptr<RealizedFont> RealizedFontOf(FontEngine& engine, const DeviceContext& context, FontUse use) {
    const auto realize = [&] {
        LOGFONTW wanted = FontOf(context);
        if (use != FontUse::Own) {
            wanted.lfQuality = use == FontUse::Mono ? NONANTIALIASED_QUALITY : ANTIALIASED_QUALITY;
        }
        return engine.Realize(wanted);
    };
    const auto& object = context.state.font;
    if (!object) {
        return realize();
    }
    const std::lock_guard<std::mutex> lock(object->mutex);
    if (!object->realized) {
        object->realized = std::make_shared<KnownFonts>();
    }
    auto& known = static_cast<KnownFonts*>(object->realized.get())->byUse[static_cast<std::size_t>(use)];
    auto font = known.lock();
    if (!font) {
        font = realize();
        known = font;
    }
    return font;
}

}   // namespace rastel::platform

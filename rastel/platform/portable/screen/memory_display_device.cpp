#include "rastel/platform/portable/screen/memory_display_device.h"

#include <algorithm>
#include <atomic>
#include <cstring>

#include "rastel/platform/portable/gdi.h"
#include "rastel/platform/portable/gdi/pixel_color.h"
#include "rastel/platform/portable/screen/frame_clock.h"
#include "rastel/platform/portable/screen/mode_list.h"

namespace rastel::platform {

namespace {

constexpr int kFixedAtEachEnd = 10;

int BytesOf(const PixelFormat& format) {
    return format.bitsPerPixel / 8;
}

HWND HandleOf(std::uintptr_t number) {
    return reinterpret_cast<HWND>(number);
}

constexpr std::uintptr_t kDesktop = 0x10010;

// Never the same twice in a process, so that the handle of an ended window stays stale on every later display.
HWND NextHandle() {
    static std::atomic<std::uintptr_t> next{kDesktop + 4};
    return HandleOf(next.fetch_add(4));
}

// Far enough out for any use, near enough for sums of two to fit an int.
RECT Placed(const RECT& rect) {
    constexpr LONG kFar = 1 << 20;
    RECT placed = {std::clamp(rect.left, -kFar, kFar), std::clamp(rect.top, -kFar, kFar),
                   std::clamp(rect.right, -kFar, kFar), std::clamp(rect.bottom, -kFar, kFar)};
    placed.right = std::max(placed.left, placed.right);
    placed.bottom = std::max(placed.top, placed.bottom);
    return placed;
}

bool SameSize(const DisplayMode& a, const DisplayMode& b) {
    return a.width == b.width && a.height == b.height && a.bitsPerPixel == b.bitsPerPixel;
}

void CopyPixels(const PixelBuffer& from, POINT at, const PixelBuffer& to, POINT place, SIZE size) {
    const int bytes = BytesOf(from.format);
    for (int y = 0; y < size.cy; ++y) {
        std::memcpy(to.Row(place.y + y) + static_cast<std::ptrdiff_t>(place.x) * bytes,
                    from.Row(at.y + y) + static_cast<std::ptrdiff_t>(at.x) * bytes,
                    static_cast<std::size_t>(size.cx) * static_cast<std::size_t>(bytes));
    }
}

}   // namespace

MemoryDisplay::MemoryDisplay(const MemoryDisplayOptions& options) : options_(options) {
    const MemoryDisplayOptions usual;
    if (!IsSensibleMode(options_.width, options_.height, usual.bitsPerPixel)) {
        options_.width = usual.width;
        options_.height = usual.height;
    }
    if (!IsSensibleMode(usual.width, usual.height, options_.bitsPerPixel)) {
        options_.bitsPerPixel = usual.bitsPerPixel;
    }
    options_.refreshHz = std::clamp(options_.refreshHz, 0, 1000);
    options_.pitchPadding = std::clamp(options_.pitchPadding, 0, 1 << 16);
    std::erase_if(options_.modes,
                  [](const auto& mode) { return !IsSensibleMode(mode.width, mode.height, mode.bitsPerPixel); });

    firstFormat_ = FormatOfDepth(options_.bitsPerPixel);
    if (AreSensibleMasks(firstFormat_.bitsPerPixel, options_.redMask, options_.greenMask, options_.blueMask)) {
        firstFormat_ = {firstFormat_.bitsPerPixel, options_.redMask, options_.greenMask, options_.blueMask};
    }
    if (!EnterFirst()) {
        options_.width = usual.width;
        options_.height = usual.height;
        EnterFirst();
    }
}

bool MemoryDisplay::EnterFirst() {
    return Enter({options_.width, options_.height, options_.bitsPerPixel, options_.refreshHz});
}

bool MemoryDisplay::Enter(const DisplayMode& mode) {
    const PixelFormat format =
        mode.bitsPerPixel == options_.bitsPerPixel ? firstFormat_ : FormatOfDepth(mode.bitsPerPixel);
    const std::int64_t packed = (std::int64_t{mode.width} * BytesOf(format) + 3) / 4 * 4;
    const std::int64_t pitch = packed + options_.pitchPadding;
    PixelMemory memory;
    if (!memory.Allocate(pitch * mode.height)) {
        return false;
    }
    memory_ = std::move(memory);
    pitch_ = static_cast<int>(pitch);
    mode_ = mode;
    mode_.refreshHz = options_.refreshHz;
    format_ = format;
    std::copy_n(UsualColors(8), palette_.size(), palette_.begin());
    return true;
}

DisplayMode MemoryDisplay::Mode() const {
    const std::lock_guard lock(mutex_);
    return mode_;
}

PixelFormat MemoryDisplay::Format() const {
    const std::lock_guard lock(mutex_);
    return format_;
}

DeviceTraits MemoryDisplay::Traits() const {
    return {options_.directDraw, options_.direct3D, options_.pitchPadding};
}

std::vector<DisplayMode> MemoryDisplay::Modes() const {
    std::vector<DisplayMode> modes;
    if (!options_.modes.empty()) {
        for (const MemoryDisplayOptions::Mode& mode : options_.modes) {
            modes.push_back({mode.width, mode.height, mode.bitsPerPixel, options_.refreshHz});
        }
        return modes;
    }
    modes = UsualModes(options_.refreshHz);
    const DisplayMode first = {options_.width, options_.height, options_.bitsPerPixel, options_.refreshHz};
    if (std::none_of(modes.begin(), modes.end(), [&](const DisplayMode& mode) { return SameSize(mode, first); })) {
        modes.push_back(first);
    }
    return modes;
}

bool MemoryDisplay::SetMode(const DisplayMode& mode) {
    const DisplayMode first = {options_.width, options_.height, options_.bitsPerPixel, options_.refreshHz};
    const std::vector<DisplayMode> modes = Modes();
    const bool offered = SameSize(mode, first) || std::any_of(modes.begin(), modes.end(), [&](const DisplayMode& one) {
                             return SameSize(one, mode);
                         });
    if (!offered || (mode.refreshHz != 0 && mode.refreshHz != options_.refreshHz) || !turn_.Take()) {
        return false;
    }
    bool entered;
    {
        const std::lock_guard lock(mutex_);
        entered = Enter(mode);
    }
    turn_.Give();
    return entered;
}

bool MemoryDisplay::RestoreMode() {
    if (!turn_.Take()) {
        return false;
    }
    bool restored = true;
    {
        const std::lock_guard lock(mutex_);
        const DisplayMode first = {options_.width, options_.height, options_.bitsPerPixel, options_.refreshHz};
        if (!SameSize(mode_, first)) {
            restored = EnterFirst();
        }
    }
    turn_.Give();
    return restored;
}

std::vector<MemoryDisplay::Window>::const_iterator MemoryDisplay::FindWindow(HWND window) const {
    return std::find_if(windows_.begin(), windows_.end(), [&](const Window& one) { return one.handle == window; });
}

bool MemoryDisplay::ClientAreaLocked(HWND window, RECT* onScreen) const {
    if (window == nullptr || window == DesktopWindow()) {
        *onScreen = ScreenRect();
        return true;
    }
    const auto found = FindWindow(window);
    if (found == windows_.end()) {
        return false;
    }
    *onScreen = found->client;
    return true;
}

Region MemoryDisplay::VisibleAreaLocked(HWND window, const RECT& client) const {
    Region visible(client);
    visible.Intersect(ScreenRect());
    if (window == nullptr || window == DesktopWindow()) {
        return visible;
    }
    for (auto above = FindWindow(window) + 1; above != windows_.end() && !visible.IsEmpty(); ++above) {
        visible.Subtract(above->client);
    }
    return visible;
}

bool MemoryDisplay::ClientArea(HWND window, RECT* onScreen) const {
    const std::lock_guard lock(mutex_);
    return onScreen != nullptr && ClientAreaLocked(window, onScreen);
}

bool MemoryDisplay::VisibleArea(HWND window, Region* onScreen) const {
    const std::lock_guard lock(mutex_);
    RECT client;
    if (onScreen == nullptr || !ClientAreaLocked(window, &client)) {
        return false;
    }
    *onScreen = VisibleAreaLocked(window, client);
    return true;
}

HWND MemoryDisplay::DesktopWindow() const {
    return HandleOf(kDesktop);
}

PixelBuffer MemoryDisplay::ScreenPixels() const {
    PixelBuffer pixels;
    pixels.bits = memory_.Data();
    pixels.width = mode_.width;
    pixels.height = mode_.height;
    pixels.pitch = pitch_;
    pixels.format = format_;
    if (format_.IsIndexed()) {
        pixels.colors = palette_.data();
        pixels.colorCount = static_cast<int>(palette_.size());
    }
    return pixels;
}

bool MemoryDisplay::BeginAccess(HWND window, const RECT& area, Access access, PixelBuffer* pixels) {
    if (pixels == nullptr || area.left < 0 || area.top < 0 || area.left >= area.right || area.top >= area.bottom ||
        !turn_.Take()) {
        return false;
    }
    const std::lock_guard lock(mutex_);
    RECT client;
    if (memory_.Data() == nullptr || !ClientAreaLocked(window, &client) || area.right > client.right - client.left ||
        area.bottom > client.bottom - client.top) {
        turn_.Give();
        return false;
    }
    const RECT onScreen = {client.left + area.left, client.top + area.top, client.left + area.right,
                           client.top + area.bottom};
    const Region visible = VisibleAreaLocked(window, client);
    PixelBuffer view = ScreenPixels();
    view.width = area.right - area.left;
    view.height = area.bottom - area.top;
    if (view.colors != nullptr) {
        // A palette realised meanwhile must not change under the reader.
        accessPalette_ = palette_;
        view.colors = accessPalette_.data();
    }
    if (visible.Contains(onScreen)) {
        view.bits += std::ptrdiff_t{onScreen.top} * pitch_ + std::ptrdiff_t{onScreen.left} * BytesOf(format_);
    } else {
        StartDetour(onScreen, visible, access, &view);
        if (view.bits == nullptr) {
            turn_.Give();
            return false;
        }
    }
    *pixels = view;
    return true;
}

void MemoryDisplay::StartDetour(const RECT& onScreen, const Region& visible, Access access, PixelBuffer* pixels) {
    pixels->bits = nullptr;
    const std::int64_t pitch = (std::int64_t{pixels->width} * BytesOf(format_) + 3) / 4 * 4;
    const std::int64_t bytes = pitch * pixels->height;
    if (bytes > INT32_MAX) {
        return;
    }
    Detour& detour = detour_.emplace();
    try {
        detour.bits.resize(static_cast<std::size_t>(bytes));
    } catch (const std::bad_alloc&) {
        detour_.reset();
        return;
    }
    detour.origin = {onScreen.left, onScreen.top};
    detour.pitch = static_cast<int>(pitch);
    detour.writesBack = access != Access::Read;
    detour.visible = visible;
    detour.visible.Intersect(onScreen);
    pixels->bits = detour.bits.data();
    pixels->pitch = detour.pitch;
    if (access != Access::Write) {
        Region readable(onScreen);
        readable.Intersect(ScreenRect());
        for (const RECT& part : readable.Rects()) {
            CopyPixels(ScreenPixels(), {part.left, part.top}, *pixels,
                       {part.left - onScreen.left, part.top - onScreen.top},
                       {part.right - part.left, part.bottom - part.top});
        }
    }
}

void MemoryDisplay::EndAccess() {
    if (!turn_.IsMine()) {
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        if (detour_ && detour_->writesBack) {
            PixelBuffer copy = ScreenPixels();
            copy.bits = detour_->bits.data();
            copy.pitch = detour_->pitch;
            for (const RECT& part : detour_->visible.Rects()) {
                CopyPixels(copy, {part.left - detour_->origin.x, part.top - detour_->origin.y}, ScreenPixels(),
                           {part.left, part.top}, {part.right - part.left, part.bottom - part.top});
            }
        }
        detour_.reset();
    }
    turn_.Give();
}

std::vector<RGBQUAD> MemoryDisplay::SystemPalette() const {
    const std::lock_guard lock(mutex_);
    return format_.IsIndexed() ? std::vector<RGBQUAD>(palette_.begin(), palette_.end()) : std::vector<RGBQUAD>();
}

bool MemoryDisplay::SetSystemPalette(int first, const std::vector<RGBQUAD>& colors) {
    const std::lock_guard lock(mutex_);
    const int size = static_cast<int>(palette_.size());
    if (!format_.IsIndexed() || first < 0 || first > size || colors.size() > static_cast<std::size_t>(size - first)) {
        return false;
    }
    for (int i = 0; i < static_cast<int>(colors.size()); ++i) {
        const int entry = first + i;
        if (entry >= kFixedAtEachEnd && entry < size - kFixedAtEachEnd) {
            const RGBQUAD& color = colors[static_cast<std::size_t>(i)];
            palette_[static_cast<std::size_t>(entry)] = {color.rgbBlue, color.rgbGreen, color.rgbRed, 0};
        }
    }
    return true;
}

void MemoryDisplay::WaitForBlank() {
    WaitForTick(options_.refreshHz);
}

HWND MemoryDisplay::MakeWindow(const RECT& clientOnScreen) {
    const std::lock_guard lock(mutex_);
    windows_.push_back({NextHandle(), Placed(clientOnScreen)});
    return windows_.back().handle;
}

void MemoryDisplay::MoveWindow(HWND window, const RECT& clientOnScreen) {
    const std::lock_guard lock(mutex_);
    const auto found = FindWindow(window);
    if (found != windows_.end()) {
        windows_[static_cast<std::size_t>(found - windows_.begin())].client = Placed(clientOnScreen);
    }
}

void MemoryDisplay::EndWindow(HWND window) {
    const std::lock_guard lock(mutex_);
    const auto found = FindWindow(window);
    if (found != windows_.end()) {
        windows_.erase(found);
    }
}

ScreenView MemoryDisplay::View() const {
    const std::lock_guard lock(mutex_);
    return {memory_.Data(), mode_.width, mode_.height, pitch_, mode_.bitsPerPixel};
}

COLORREF MemoryDisplay::Pixel(int x, int y) const {
    const std::lock_guard lock(mutex_);
    if (x < 0 || y < 0 || x >= mode_.width || y >= mode_.height || memory_.Data() == nullptr) {
        return CLR_INVALID;
    }
    const PixelBuffer screen = ScreenPixels();
    const int bytes = BytesOf(format_);
    const unsigned char* const at = screen.Row(y) + static_cast<std::ptrdiff_t>(x) * bytes;
    DWORD raw = 0;
    for (int i = 0; i < bytes; ++i) {
        raw |= DWORD{at[i]} << (8 * i);
    }
    return ColorOfPixel(screen, raw);
}

}   // namespace rastel::platform

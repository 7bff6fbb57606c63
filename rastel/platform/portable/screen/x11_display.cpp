#include "rastel/platform/portable/screen/x11_display.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <optional>
#include <utility>

#include "rastel/platform/portable/screen/access_turn.h"
#include "rastel/platform/portable/screen/frame_clock.h"
#include "rastel/platform/portable/screen/x11_blank.h"
#include "rastel/platform/portable/screen/x11_connection.h"
#include "rastel/platform/portable/screen/x11_layout.h"
#include "rastel/platform/portable/screen/x11_modes.h"
#include "rastel/platform/portable/screen/x11_palette.h"
#include "rastel/platform/portable/screen/x11_transfer.h"
#include "rastel/platform/portable/screen/x11_windows.h"

namespace rastel::platform {

namespace {

bool IsEmpty(const RECT& rect) {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}

bool SameRect(const RECT& a, const RECT& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

// A server gives out only what is mapped and on the screen; the rest is to read as 0.
RECT ReadablePart(const X11WindowFacts& facts, const RECT& area) {
    if (!facts.isViewable) {
        return {};
    }
    const RECT part = {std::max(area.left, -facts.client.left), std::max(area.top, -facts.client.top),
                       std::min(area.right, facts.screen.cx - facts.client.left),
                       std::min(area.bottom, facts.screen.cy - facts.client.top)};
    return IsEmpty(part) ? RECT{} : part;
}

// All that is told or asked through the connection. Callers hold the lock of the display and, unless `windows` alone is
// asked, a SigpipeGuard.
struct Server {
    Server(std::unique_ptr<X11Connection> open, const PixelLayout& screenLayout, X11Layouts allLayouts)
        : connection(std::move(open)),
          layouts(std::move(allLayouts)),
          screen(screenLayout),
          windows(*connection),
          transfer(*connection),
          palette(*connection, screen),
          modes(*connection) {}

    std::unique_ptr<X11Connection> connection;
    X11Layouts layouts;
    PixelLayout screen;
    X11Windows windows;
    X11Transfer transfer;
    X11Palette palette;
    X11Modes modes;
    DisplayMode lastMode;
    std::wstring lastName;
};

class X11Display : public DisplayDevice {
public:
    X11Display(std::unique_ptr<Server> server, std::string name)
        : server_(std::move(server)), blank_(std::move(name)) {}
    ~X11Display() override;

    std::wstring Kind() const override { return L"x11"; }
    std::wstring Name() const override;
    DisplayMode Mode() const override;
    PixelFormat Format() const override { return server_->screen.format; }
    std::vector<DisplayMode> Modes() const override;
    bool SetMode(const DisplayMode& mode) override;
    bool RestoreMode() override;

    bool ClientArea(HWND window, RECT* onScreen) const override;
    bool VisibleArea(HWND window, Region* onScreen) const override;
    bool WindowArea(HWND window, RECT* onScreen) const override;
    HWND DesktopWindow() const override;

    bool BeginAccess(HWND window, const RECT& area, Access access, PixelBuffer* pixels) override;
    void EndAccess() override;
    std::int64_t BandBytes() const override { return 1 << 21; }   // smaller ones cost more to send

    std::vector<RGBQUAD> SystemPalette() const override;
    bool SetSystemPalette(int first, const std::vector<RGBQUAD>& colors) override;
    void WaitForBlank() override;
    void Flush() override;

private:
    // Around every use of what is known of the windows, which a drawing asks for several times.
    class Look {
    public:
        explicit Look(const X11Display& display);

    private:
        std::lock_guard<std::mutex> lock_;
    };
    // Around every other use of the server.
    class Session {
    public:
        explicit Session(const X11Display& display) : look_(display) {}

    private:
        SigpipeGuard guard_;
        Look look_;
    };

    int BitsPerPixel() const;
    std::optional<xcb_window_t> IdOf(HWND window) const;
    std::optional<X11WindowFacts> Find(HWND window) const;
    bool Fetch(xcb_window_t window, const RECT& area, const RECT& readable, const PixelLayout& layout,
               unsigned char* bits);
    bool Prepare(HWND window, const RECT& area, Access access, PixelBuffer* pixels);

    struct Current {
        xcb_window_t window = 0;
        RECT area{};
        const PixelLayout* layout = nullptr;
        bool writesBack = false;
    };

    std::unique_ptr<Server> server_;
    mutable std::mutex mutex_;
    AccessTurn turn_;
    Current current_;
    X11Colors accessColors_{};
    X11Blank blank_;
};

X11Display::Look::Look(const X11Display& display) : lock_(display.mutex_) {
    Server& server = *display.server_;
    const X11Connection::Changes changes = server.connection->Drain(server.modes.FirstEvent());
    if (changes.ofModes) {
        server.modes.Forget();
    }
    const bool isLost = !server.connection->IsAlive();
    if (changes.ofWindows || isLost) {
        server.windows.Forget(changes.ofHierarchy || isLost);
    }
}

X11Display::~X11Display() {
    const SigpipeGuard guard;
    server_->modes.Restore();
    server_.reset();
}

std::wstring X11Display::Name() const {
    const Session session(*this);
    const std::wstring name = server_->modes.Name();
    if (server_->connection->IsAlive()) {
        server_->lastName = name;
    }
    return server_->lastName;
}

// 15 bits are stored in 16 and still called 15; the other depths are called what they are stored in.
int X11Display::BitsPerPixel() const {
    return server_->screen.depth == 15 ? 15 : server_->screen.format.bitsPerPixel;
}

DisplayMode X11Display::Mode() const {
    const Session session(*this);
    const auto root = server_->windows.Find(server_->connection->Root());
    if (root) {
        server_->lastMode = {root->screen.cx, root->screen.cy, BitsPerPixel(), server_->modes.RefreshHz()};
    }
    return server_->lastMode;
}

std::vector<DisplayMode> X11Display::Modes() const {
    const DisplayMode now = Mode();
    const Session session(*this);
    std::vector<DisplayMode> modes = server_->modes.List(BitsPerPixel());
    const bool listed = std::any_of(modes.begin(), modes.end(), [&](const DisplayMode& mode) {
        return mode.width == now.width && mode.height == now.height;
    });
    if (!listed && now.width > 0) {
        modes.push_back(now);
    }
    return modes;
}

bool X11Display::SetMode(const DisplayMode& mode) {
    const DisplayMode now = Mode();
    if (mode.bitsPerPixel != BitsPerPixel()) {
        return false;   // the depth of a server is fixed
    }
    const bool same = mode.width == now.width && mode.height == now.height &&
                      (mode.refreshHz == 0 || mode.refreshHz == now.refreshHz);
    const Session session(*this);
    return server_->connection->IsAlive() && (same || server_->modes.Set(mode.width, mode.height, mode.refreshHz));
}

bool X11Display::RestoreMode() {
    const Session session(*this);
    return server_->connection->IsAlive() && server_->modes.Restore();
}

std::optional<xcb_window_t> X11Display::IdOf(HWND window) const {
    const auto number = reinterpret_cast<std::uintptr_t>(window);
    if (number > UINT32_MAX) {
        return std::nullopt;
    }
    return number == 0 ? server_->connection->Root() : static_cast<xcb_window_t>(number);
}

std::optional<X11WindowFacts> X11Display::Find(HWND window) const {
    const auto id = IdOf(window);
    return id ? server_->windows.Find(*id) : std::nullopt;
}

bool X11Display::ClientArea(HWND window, RECT* onScreen) const {
    const Look look(*this);
    const auto facts = Find(window);
    if (!facts || onScreen == nullptr) {
        return false;
    }
    *onScreen = facts->client;
    return true;
}

bool X11Display::WindowArea(HWND window, RECT* onScreen) const {
    const Look look(*this);
    const auto facts = Find(window);
    if (!facts || onScreen == nullptr) {
        return false;
    }
    *onScreen = {facts->client.left - facts->border, facts->client.top - facts->border,
                 facts->client.right + facts->border, facts->client.bottom + facts->border};
    return true;
}

bool X11Display::VisibleArea(HWND window, Region* onScreen) const {
    const Look look(*this);
    const auto id = IdOf(window);
    auto visible = id ? server_->windows.VisibleArea(*id) : std::nullopt;
    if (!visible || onScreen == nullptr) {
        return false;
    }
    *onScreen = *std::move(visible);
    return true;
}

HWND X11Display::DesktopWindow() const {
    return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(server_->connection->Root()));
}

bool X11Display::BeginAccess(HWND window, const RECT& area, Access access, PixelBuffer* pixels) {
    // Positions inside a window are 16 bits wide.
    if (pixels == nullptr || area.left < 0 || area.top < 0 || IsEmpty(area) || area.right > INT16_MAX ||
        area.bottom > INT16_MAX || !turn_.Take()) {
        return false;
    }
    if (!Prepare(window, area, access, pixels)) {
        turn_.Give();
        return false;
    }
    return true;
}

bool X11Display::Prepare(HWND window, const RECT& area, Access access, PixelBuffer* pixels) {
    const Session session(*this);
    const auto facts = Find(window);
    if (!facts || !facts->hasPixels || area.right > facts->client.right - facts->client.left ||
        area.bottom > facts->client.bottom - facts->client.top) {
        return false;
    }
    const PixelLayout* const layout = server_->layouts.Find(facts->depth, facts->visual);
    if (layout == nullptr) {
        return false;
    }
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const std::int64_t bytes = layout->PitchOf(width) * height;
    const bool reads = access != Access::Write;
    const RECT readable = reads ? ReadablePart(*facts, area) : RECT{};
    const bool readsPart = !IsEmpty(readable) && !SameRect(readable, area);
    const std::int64_t partBytes =
        readsPart ? layout->PitchOf(readable.right - readable.left) * (readable.bottom - readable.top) : 0;
    unsigned char* const bits = server_->transfer.Reserve(bytes + partBytes);
    if (bits == nullptr || (reads && !Fetch(facts->window, area, readable, *layout, bits))) {
        return false;
    }
    PixelBuffer view;
    view.bits = bits;
    view.width = width;
    view.height = height;
    view.pitch = static_cast<int>(layout->PitchOf(width));
    view.format = layout->format;
    if (layout->format.IsIndexed()) {
        accessColors_ = facts->colormap == server_->connection->Screen().default_colormap
                            ? server_->palette.LastRead()
                            : ReadColors(*server_->connection, facts->colormap, layout->colorCount);
        view.colors = accessColors_.data();
        view.colorCount = layout->colorCount;
    }
    current_ = {facts->window, area, layout, access != Access::Read};
    *pixels = view;
    return server_->connection->IsAlive();
}

bool X11Display::Fetch(xcb_window_t window, const RECT& area, const RECT& readable, const PixelLayout& layout,
                       unsigned char* bits) {
    const std::int64_t pitch = layout.PitchOf(area.right - area.left);
    const std::int64_t bytes = pitch * (area.bottom - area.top);
    const bool readsAll = SameRect(readable, area);
    auto fetched = X11Transfer::Fetched::Refused;
    if (!IsEmpty(readable)) {
        fetched = server_->transfer.Fetch(window, readable, layout, readsAll ? 0 : bytes);
    }
    if (!readsAll || fetched == X11Transfer::Fetched::Refused) {
        std::memset(bits, 0, static_cast<std::size_t>(bytes));
    }
    if (!readsAll && fetched == X11Transfer::Fetched::All) {
        const int bytesPerPixel = layout.format.bitsPerPixel / 8;
        const std::int64_t partPitch = layout.PitchOf(readable.right - readable.left);
        const auto rowBytes = static_cast<std::size_t>((readable.right - readable.left) * std::int64_t{bytesPerPixel});
        unsigned char* const corner =
            bits + pitch * (readable.top - area.top) + std::int64_t{readable.left - area.left} * bytesPerPixel;
        for (int y = 0; y < readable.bottom - readable.top; ++y) {
            std::memcpy(corner + pitch * y, bits + bytes + partPitch * y, rowBytes);
        }
    }
    return fetched != X11Transfer::Fetched::NoDrawable && server_->connection->IsAlive();
}

void X11Display::EndAccess() {
    if (!turn_.IsMine()) {
        return;
    }
    {
        const Session session(*this);
        if (current_.writesBack) {
            const bool onRoot = current_.window == server_->connection->Root();
            server_->transfer.Put(current_.window, current_.area, *current_.layout,
                                  onRoot ? X11Transfer::Inferiors::Drawn : X11Transfer::Inferiors::Spared);
        }
        current_ = {};
    }
    turn_.Give();
}

std::vector<RGBQUAD> X11Display::SystemPalette() const {
    const Session session(*this);
    if (!server_->screen.format.IsIndexed()) {
        return {};
    }
    const X11Colors& colors = server_->palette.Read();
    return {colors.begin(), colors.end()};
}

bool X11Display::SetSystemPalette(int first, const std::vector<RGBQUAD>& colors) {
    const Session session(*this);
    return server_->connection->IsAlive() && server_->palette.Store(first, colors);
}

void X11Display::WaitForBlank() {
    if (!blank_.Wait()) {
        WaitForTick(Mode().refreshHz);
    }
}

void X11Display::Flush() {
    const Session session(*this);
    server_->transfer.Finish();
}

}   // namespace

std::shared_ptr<DisplayDevice> ConnectX11Display(const char* name, std::wstring* declined) {
    const SigpipeGuard guard;
    std::unique_ptr<X11Connection> connection = X11Connection::Open(name, declined);
    if (!connection) {
        return nullptr;
    }
    X11Layouts layouts(connection->Setup(), connection->Screen());
    const PixelLayout* const screen = layouts.Find(connection->Screen().root_depth, connection->Screen().root_visual);
    if (screen == nullptr) {
        *declined = L"the X screen has an unknown pixel format";
        return nullptr;
    }
    const PixelLayout screenLayout = *screen;
    auto server = std::make_unique<Server>(std::move(connection), screenLayout, std::move(layouts));
    auto display = std::make_shared<X11Display>(std::move(server), name != nullptr ? name : "");
    // What is still told when the server has gone.
    display->Mode();
    display->Name();
    return display;
}

}   // namespace rastel::platform

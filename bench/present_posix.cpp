// A picture in memory onto a window of an X server. Everybody waits for the server before the memory that it reads is
// written again; the yardstick copies the picture once, in memory.
#include <sys/ipc.h>
#include <sys/shm.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

#include "families.h"
#include "rastel/display/primary_surface.h"
#include "rastel/surface/reference.h"
#include "support/contenders.h"
#include "support/peers.h"

namespace rastel::bench {
namespace {

// A connection with a window on it.
class Client {
public:
    explicit Client(Size size) : xcb_(xcb_connect(nullptr, nullptr)), size_(size), window_(xcb_generate_id(xcb_)) {
        const xcb_setup_t* const setup = xcb_get_setup(xcb_);
        if (xcb_connection_has_error(xcb_) || !setup) {
            return;
        }
        const xcb_screen_t& screen = *xcb_setup_roots_iterator(setup).data;
        depth_ = screen.root_depth;
        const std::uint32_t withoutManager = 1;
        xcb_create_window(xcb_, XCB_COPY_FROM_PARENT, window_, screen.root, 0, 0,
                          static_cast<std::uint16_t>(size.width), static_cast<std::uint16_t>(size.height), 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual, XCB_CW_OVERRIDE_REDIRECT, &withoutManager);
        Show();
        xcb_create_gc(xcb_, context_ = xcb_generate_id(xcb_), window_, 0, nullptr);
        isThere_ = true;
    }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    ~Client() { xcb_disconnect(xcb_); }

    bool IsThere() const { return isThere_; }
    HWND Window() const { return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(window_)); }
    void Show() {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_map_window(xcb_, window_);
        xcb_configure_window(xcb_, window_, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        Wait();
    }
    void Wait() { std::free(xcb_get_input_focus_reply(xcb_, xcb_get_input_focus(xcb_), nullptr)); }

protected:
    xcb_connection_t* xcb_;
    Size size_;
    xcb_window_t window_;
    xcb_gcontext_t context_ = 0;
    std::uint8_t depth_ = 0;
    bool isThere_ = false;
};

// The least that a picture costs: one copy to memory that the server shares, and its put.
class BarePut : public Client {
public:
    explicit BarePut(Size size) : Client(size) {
        if (!IsThere()) {
            return;
        }
        const int id = shmget(IPC_PRIVATE, static_cast<std::size_t>(size.width) * size.height * 4, IPC_CREAT | 0600);
        bits_ = static_cast<BYTE*>(shmat(id, nullptr, 0));
        segment_ = xcb_generate_id(xcb_);
        xcb_shm_attach(xcb_, segment_, static_cast<std::uint32_t>(id), 0);
        Wait();
        shmctl(id, IPC_RMID, nullptr);   // goes when both sides have let go of it
    }
    ~BarePut() {
        if (bits_) {
            shmdt(bits_);
        }
    }

    bool Present(Area picture) {
        if (!bits_) {
            return false;
        }
        if (isPending_) {
            std::free(xcb_get_input_focus_reply(xcb_, fence_, nullptr));
        }
        CopyRows({bits_, size_.width * 4}, picture, size_.width * 4, size_.height);
        const auto width = static_cast<std::uint16_t>(size_.width), height = static_cast<std::uint16_t>(size_.height);
        xcb_shm_put_image(xcb_, window_, context_, width, height, 0, 0, width, height, 0, 0, depth_,
                          XCB_IMAGE_FORMAT_Z_PIXMAP, 0, segment_, 0);
        fence_ = xcb_get_input_focus(xcb_);
        isPending_ = true;
        return xcb_flush(xcb_) > 0;
    }

private:
    BYTE* bits_ = nullptr;
    xcb_shm_seg_t segment_ = 0;
    xcb_get_input_focus_cookie_t fence_{};
    bool isPending_ = false;
};

#if defined(RASTEL_BENCH_HAS_SDL2)
class SdlWindow {
public:
    explicit SdlWindow(Size size) {
        SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");   // its put of shared memory
        if (SDL_InitSubSystem(SDL_INIT_VIDEO) == 0) {
            window_ = SDL_CreateWindow("bench", 0, 0, size.width, size.height, SDL_WINDOW_BORDERLESS);
        }
    }
    SdlWindow(const SdlWindow&) = delete;
    SdlWindow& operator=(const SdlWindow&) = delete;
    ~SdlWindow() {
        if (window_) {
            SDL_DestroyWindow(window_);
        }
    }

    bool Present(const Round& r) {
        SDL_Surface* const surface = window_ ? SDL_GetWindowSurface(window_) : nullptr;
        if (!surface || surface->w != r.width || surface->h != r.height || surface->format->BytesPerPixel != 4) {
            return false;
        }
        CopyRows({static_cast<BYTE*>(surface->pixels), surface->pitch}, r.fromNoise, r.width * 4, r.height);
        return SDL_UpdateWindowSurface(window_) == 0;
    }

private:
    SDL_Window* window_ = nullptr;
};
#endif

class RastelWindow : public Client {
public:
    RastelWindow(CDisplayManager& manager, Size size) : Client(size), primary_(manager.CreatePrimarySurface()) {
        if (primary_ && IsThere()) {
            primary_->SetWindow(Window());
        }
    }

    bool Present(CSurface& picture) { return IsThere() && primary_ && primary_->Blt(0, 0, picture, nullptr); }

private:
    Reference<CPrimarySurface> primary_;
};

}   // namespace

void AddPresent(Suite& suite) {
    AddMemcpy(suite, "present");
    suite.AddPrepared("present", "Rastel", [](Scene& scene) {
        const auto window = std::make_shared<RastelWindow>(scene.Manager(), scene.GetSize());
        return [window](const Round& r) { return window->Present(*r.noise); };
    });
    suite.AddPrepared("present", "XShmPutImage", [](Scene& scene) {
        const auto window = std::make_shared<BarePut>(scene.GetSize());
        return [window](const Round& r) { return window->Present(r.fromNoise); };
    });
#if defined(RASTEL_BENCH_HAS_SDL2)
    suite.AddPrepared("present", "SDL2", [](Scene& scene) {
        const auto window = std::make_shared<SdlWindow>(scene.GetSize());
        return [window](const Round& r) { return window->Present(r); };
    });
#endif
}

}   // namespace rastel::bench

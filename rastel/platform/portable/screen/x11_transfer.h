// Moves pixels between our memory and an X server: through memory shared with it where that works, else in requests.
#pragma once

#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <optional>

#include "rastel/platform/portable/gdi/pixel_memory.h"
#include "rastel/platform/portable/screen/x11_connection.h"
#include "rastel/platform/portable/screen/x11_layout.h"

namespace rastel::platform {

class X11Transfer {
public:
    explicit X11Transfer(X11Connection& connection);
    ~X11Transfer();
    X11Transfer(const X11Transfer&) = delete;
    X11Transfer& operator=(const X11Transfer&) = delete;

    bool UsesSharedMemory() const { return isShared_; }

    // A block that the server is not reading from, until the next call. Its contents are anything. Null: no memory.
    // There are two by turns: one is filled while the server reads the other.
    unsigned char* Reserve(std::int64_t bytes);

    // Reads `area` of a drawable to `offset` in the reserved block, in rows of the layout's own pitch.
    enum class Fetched { All, Refused, NoDrawable };
    Fetched Fetch(xcb_drawable_t drawable, const RECT& area, const PixelLayout& layout, std::int64_t offset);

    // Shows the beginning of the reserved block in `area`. Over `Inferiors::Drawn` windows lying on the drawable are
    // painted over, else they are left out.
    enum class Inferiors { Spared, Drawn };
    void Put(xcb_drawable_t drawable, const RECT& area, const PixelLayout& layout, Inferiors inferiors);

    void Finish();   // waits until the server has done all of it

private:
    struct Block {
        unsigned char* bits = nullptr;
        std::int64_t bytes = 0;
        xcb_shm_seg_t segment = 0;                           // 0: not shared
        PixelMemory own;                                     // where it is not shared
        std::optional<xcb_get_input_focus_cookie_t> fence;   // answered when the server is through with it
    };

    bool CanShare();
    bool Grow(Block& block, std::int64_t bytes);
    bool Share(Block& block, std::int64_t bytes);
    void Clear(Block& block);
    void WaitForServer(Block& block);
    xcb_gcontext_t GraphicsContext(int depth, Inferiors inferiors);
    Fetched FetchShared(xcb_drawable_t drawable, const RECT& area, std::int64_t offset);
    Fetched FetchPlain(xcb_drawable_t drawable, const RECT& area, const PixelLayout& layout, std::int64_t offset);
    void PutPlain(xcb_drawable_t drawable, xcb_gcontext_t context, const RECT& area, const PixelLayout& layout);

    X11Connection& connection_;
    xcb_connection_t* const xcb_;
    bool isShared_;
    Block blocks_[2];
    Block* block_ = &blocks_[0];               // the reserved one
    std::map<int, xcb_gcontext_t> contexts_;   // by depth; negative: for Inferiors::Drawn
};

}   // namespace rastel::platform

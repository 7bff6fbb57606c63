#include "rastel/platform/portable/screen/x11_transfer.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

namespace rastel::platform {

namespace {

constexpr std::int64_t kBandBytes = 4 << 20;   // one answer with pixels stays about this small

int Width(const RECT& area) {
    return area.right - area.left;
}
int Height(const RECT& area) {
    return area.bottom - area.top;
}

X11Transfer::Fetched ResultOf(const xcb_generic_error_t* error) {
    constexpr int kBadWindow = 3;
    constexpr int kBadDrawable = 9;
    const bool noDrawable = error != nullptr && (error->error_code == kBadWindow || error->error_code == kBadDrawable);
    return noDrawable ? X11Transfer::Fetched::NoDrawable : X11Transfer::Fetched::Refused;
}

}   // namespace

X11Transfer::X11Transfer(X11Connection& connection)
    : connection_(connection), xcb_(connection.Get()), isShared_(CanShare()) {
    xcb_prefetch_maximum_request_length(xcb_);
}

X11Transfer::~X11Transfer() {
    for (Block& block : blocks_) {
        Clear(block);
    }
}

bool X11Transfer::CanShare() {
    // Over a network a descriptor never arrives and the server would wait for it.
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(xcb_, &xcb_shm_id);
    if (!connection_.IsLocal() || extension == nullptr || !extension->present) {
        return false;
    }
    const XReply<xcb_shm_query_version_reply_t> version(
        xcb_shm_query_version_reply(xcb_, xcb_shm_query_version(xcb_), nullptr));
    return version && (version->major_version > 1 || (version->major_version == 1 && version->minor_version >= 2));
}

unsigned char* X11Transfer::Reserve(std::int64_t bytes) {
    block_ = block_ == &blocks_[0] ? &blocks_[1] : &blocks_[0];
    WaitForServer(*block_);
    return bytes <= block_->bytes || Grow(*block_, bytes) ? block_->bits : nullptr;
}

bool X11Transfer::Grow(Block& block, std::int64_t bytes) {
    Clear(block);
    if (!isShared_ || !Share(block, bytes)) {
        if (!block.own.Allocate(bytes)) {
            return false;
        }
        block.bits = block.own.Data();
        block.bytes = bytes;
    }
    return true;
}

bool X11Transfer::Share(Block& block, std::int64_t bytes) {
    constexpr std::int64_t kStep = 1 << 18;   // so that a slightly larger picture doesn't need a new one
    const std::int64_t rounded = (bytes + kStep - 1) / kStep * kStep;
    if (bytes <= 0 || rounded > INT32_MAX) {
        return false;
    }
    const int file = memfd_create("rastel-picture", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    if (file < 0) {
        return false;
    }
    // Reserved in full, and never to shrink: touching a page that can't be had would end the process.
    if (posix_fallocate(file, 0, rounded) != 0 || fcntl(file, F_ADD_SEALS, F_SEAL_SHRINK) != 0) {
        close(file);
        return false;
    }
    void* const bits = mmap(nullptr, static_cast<std::size_t>(rounded), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (bits == MAP_FAILED) {
        close(file);
        return false;
    }
    const xcb_shm_seg_t segment = xcb_generate_id(xcb_);
    // The connection closes the file.
    const XReply<xcb_generic_error_t> error(xcb_request_check(xcb_, xcb_shm_attach_fd_checked(xcb_, segment, file, 0)));
    if (error || !connection_.IsAlive()) {
        isShared_ = false;   // it would refuse the next one as well
        munmap(bits, static_cast<std::size_t>(rounded));
        return false;
    }
    block.bits = static_cast<unsigned char*>(bits);
    block.bytes = rounded;
    block.segment = segment;
    return true;
}

void X11Transfer::Clear(Block& block) {
    if (block.fence) {
        xcb_discard_reply(xcb_, block.fence->sequence);
    }
    if (block.segment != 0) {
        xcb_shm_detach(xcb_, block.segment);   // takes its turn behind any put that is still to come
        munmap(block.bits, static_cast<std::size_t>(block.bytes));
    }
    block = {};
}

void X11Transfer::WaitForServer(Block& block) {
    if (block.fence) {
        std::free(xcb_get_input_focus_reply(xcb_, *block.fence, nullptr));
        block.fence.reset();
    }
}

void X11Transfer::Finish() {
    if (!block_->fence) {
        block_->fence = xcb_get_input_focus(xcb_);
    }
    for (Block& block : blocks_) {
        WaitForServer(block);
    }
}

xcb_gcontext_t X11Transfer::GraphicsContext(int depth, Inferiors inferiors) {
    const int key = inferiors == Inferiors::Drawn ? -depth : depth;
    const auto found = contexts_.find(key);
    if (found != contexts_.end()) {
        return found->second;
    }
    // Made on a pixmap: a window may go at any moment and would take a context that is being made with it.
    const xcb_pixmap_t pixmap = xcb_generate_id(xcb_);
    xcb_create_pixmap(xcb_, static_cast<std::uint8_t>(depth), pixmap, connection_.Root(), 1, 1);
    const xcb_gcontext_t context = xcb_generate_id(xcb_);
    const std::uint32_t values[] = {inferiors == Inferiors::Drawn ? std::uint32_t{XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS}
                                                                  : std::uint32_t{XCB_SUBWINDOW_MODE_CLIP_BY_CHILDREN},
                                    0};
    xcb_create_gc(xcb_, context, pixmap, XCB_GC_SUBWINDOW_MODE | XCB_GC_GRAPHICS_EXPOSURES, values);
    xcb_free_pixmap(xcb_, pixmap);
    contexts_[key] = context;
    return context;
}

X11Transfer::Fetched X11Transfer::Fetch(xcb_drawable_t drawable, const RECT& area, const PixelLayout& layout,
                                        std::int64_t offset) {
    const std::int64_t bytes = layout.PitchOf(Width(area)) * Height(area);
    if (block_->bits == nullptr || offset < 0 || offset + bytes > block_->bytes) {
        return Fetched::Refused;
    }
    const Fetched fetched =
        block_->segment != 0 ? FetchShared(drawable, area, offset) : FetchPlain(drawable, area, layout, offset);
    if (fetched == Fetched::All) {
        layout.FromServer(block_->bits + offset, Width(area), Height(area));
    }
    return fetched;
}

X11Transfer::Fetched X11Transfer::FetchShared(xcb_drawable_t drawable, const RECT& area, std::int64_t offset) {
    const auto cookie = xcb_shm_get_image(
        xcb_, drawable, static_cast<std::int16_t>(area.left), static_cast<std::int16_t>(area.top),
        static_cast<std::uint16_t>(Width(area)), static_cast<std::uint16_t>(Height(area)), ~std::uint32_t{0},
        XCB_IMAGE_FORMAT_Z_PIXMAP, block_->segment, static_cast<std::uint32_t>(offset));
    xcb_generic_error_t* raw = nullptr;
    const XReply<xcb_shm_get_image_reply_t> reply(xcb_shm_get_image_reply(xcb_, cookie, &raw));
    const XReply<xcb_generic_error_t> error(raw);
    return reply ? Fetched::All : ResultOf(error.get());
}

X11Transfer::Fetched X11Transfer::FetchPlain(xcb_drawable_t drawable, const RECT& area, const PixelLayout& layout,
                                             std::int64_t offset) {
    const std::int64_t pitch = layout.PitchOf(Width(area));
    const int rowsAtOnce = static_cast<int>(std::max<std::int64_t>(1, kBandBytes / pitch));
    for (int top = 0; top < Height(area); top += rowsAtOnce) {
        const int rows = std::min(rowsAtOnce, Height(area) - top);
        const auto cookie =
            xcb_get_image(xcb_, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, static_cast<std::int16_t>(area.left),
                          static_cast<std::int16_t>(area.top + top), static_cast<std::uint16_t>(Width(area)),
                          static_cast<std::uint16_t>(rows), ~std::uint32_t{0});
        xcb_generic_error_t* raw = nullptr;
        const XReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(xcb_, cookie, &raw));
        const XReply<xcb_generic_error_t> error(raw);
        if (!reply) {
            return ResultOf(error.get());
        }
        if (xcb_get_image_data_length(reply.get()) < pitch * rows) {
            return Fetched::Refused;
        }
        std::memcpy(block_->bits + offset + pitch * top, xcb_get_image_data(reply.get()),
                    static_cast<std::size_t>(pitch * rows));
    }
    return Fetched::All;
}

void X11Transfer::Put(xcb_drawable_t drawable, const RECT& area, const PixelLayout& layout, Inferiors inferiors) {
    if (block_->bits == nullptr || layout.PitchOf(Width(area)) * Height(area) > block_->bytes) {
        return;
    }
    const xcb_gcontext_t context = GraphicsContext(layout.depth, inferiors);
    layout.ToServer(block_->bits, Width(area), Height(area));
    if (block_->segment != 0) {
        xcb_shm_put_image(xcb_, drawable, context, static_cast<std::uint16_t>(Width(area)),
                          static_cast<std::uint16_t>(Height(area)), 0, 0, static_cast<std::uint16_t>(Width(area)),
                          static_cast<std::uint16_t>(Height(area)), static_cast<std::int16_t>(area.left),
                          static_cast<std::int16_t>(area.top), static_cast<std::uint8_t>(layout.depth),
                          XCB_IMAGE_FORMAT_Z_PIXMAP, 0, block_->segment, 0);
        block_->fence = xcb_get_input_focus(xcb_);
    } else {
        PutPlain(drawable, context, area, layout);
    }
    xcb_flush(xcb_);
}

void X11Transfer::PutPlain(xcb_drawable_t drawable, xcb_gcontext_t context, const RECT& area,
                           const PixelLayout& layout) {
    constexpr std::int64_t kHeader = 28;   // of the request, in its longer form
    const std::int64_t room = std::int64_t{xcb_get_maximum_request_length(xcb_)} * 4 - kHeader;
    const std::int64_t pitch = layout.PitchOf(Width(area));
    const int rowsAtOnce = static_cast<int>(std::min<std::int64_t>(std::min(room, kBandBytes) / pitch, INT16_MAX));
    if (rowsAtOnce < 1) {
        return;
    }
    for (int top = 0; top < Height(area); top += rowsAtOnce) {
        const int rows = std::min(rowsAtOnce, Height(area) - top);
        xcb_put_image(xcb_, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, context, static_cast<std::uint16_t>(Width(area)),
                      static_cast<std::uint16_t>(rows), static_cast<std::int16_t>(area.left),
                      static_cast<std::int16_t>(area.top + top), 0, static_cast<std::uint8_t>(layout.depth),
                      static_cast<std::uint32_t>(pitch * rows), block_->bits + pitch * top);
    }
}

}   // namespace rastel::platform

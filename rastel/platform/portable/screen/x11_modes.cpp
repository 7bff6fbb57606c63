#include "rastel/platform/portable/screen/x11_modes.h"

#include <algorithm>
#include <span>

namespace rastel::platform {

namespace {

constexpr wchar_t kNameless[] = L"X11 display";
constexpr std::size_t kLongestName = 31;   // what a device name has room for

// Output names are bytes of any kind. What reaches hosts, and with them file and key names, is plain text.
std::wstring Sanitised(const std::uint8_t* bytes, int count) {
    std::wstring name;
    for (int i = 0; i < count && name.size() < kLongestName; ++i) {
        const bool plain = bytes[i] > ' ' && bytes[i] < 0x7F && bytes[i] != '/' && bytes[i] != '\\';
        name += plain ? static_cast<wchar_t>(bytes[i]) : L'-';
    }
    return name.empty() ? kNameless : name;
}

int RefreshOf(const xcb_randr_mode_info_t& mode) {
    std::uint64_t lines = mode.vtotal;
    if ((mode.mode_flags & XCB_RANDR_MODE_FLAG_DOUBLE_SCAN) != 0) {
        lines *= 2;
    }
    std::uint64_t clock = mode.dot_clock;
    if ((mode.mode_flags & XCB_RANDR_MODE_FLAG_INTERLACE) != 0) {
        clock *= 2;
    }
    const std::uint64_t dots = lines * mode.htotal;
    return dots == 0 ? 0 : static_cast<int>(std::min<std::uint64_t>((clock + dots / 2) / dots, 1000));
}

bool IsTurned(std::uint16_t rotation) {
    return (rotation & (XCB_RANDR_ROTATION_ROTATE_90 | XCB_RANDR_ROTATION_ROTATE_270)) != 0;
}

// As many millimetres as 96 dots an inch make of it, which is what hosts without a real size count with.
SIZE MillimetresOf(SIZE size) {
    return {std::max(1, size.cx * 254 / 960), std::max(1, size.cy * 254 / 960)};
}

}   // namespace

X11Modes::X11Modes(X11Connection& connection) : connection_(connection), xcb_(connection.Get()) {
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(xcb_, &xcb_randr_id);
    if (extension == nullptr || !extension->present) {
        return;
    }
    const XReply<xcb_randr_query_version_reply_t> version(
        xcb_randr_query_version_reply(xcb_, xcb_randr_query_version(xcb_, 1, 3), nullptr));
    hasRandr_ = version && (version->major_version > 1 || (version->major_version == 1 && version->minor_version >= 3));
    if (hasRandr_) {
        firstEvent_ = extension->first_event;
        xcb_randr_select_input(xcb_, connection_.Root(),
                               XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    }
}

void X11Modes::Learn() {
    if (isKnown_) {
        return;
    }
    isKnown_ = true;
    name_ = kNameless;
    crtc_ = 0;
    modes_.clear();
    refreshHz_ = 0;
    now_ = {};
    if (!hasRandr_) {
        return;
    }
    const auto resourcesCookie = xcb_randr_get_screen_resources_current(xcb_, connection_.Root());
    const auto primaryCookie = xcb_randr_get_output_primary(xcb_, connection_.Root());
    const XReply<xcb_randr_get_screen_resources_current_reply_t> resources(
        xcb_randr_get_screen_resources_current_reply(xcb_, resourcesCookie, nullptr));
    const XReply<xcb_randr_get_output_primary_reply_t> primary(
        xcb_randr_get_output_primary_reply(xcb_, primaryCookie, nullptr));
    if (!resources) {
        return;
    }
    configTime_ = resources->config_timestamp;
    const xcb_randr_crtc_t* const crtcs = xcb_randr_get_screen_resources_current_crtcs(resources.get());
    allCrtcs_.assign(crtcs, crtcs + xcb_randr_get_screen_resources_current_crtcs_length(resources.get()));

    // The primary output if it shows anything, else the first that does.
    std::vector<xcb_randr_output_t> outputs;
    if (primary && primary->output != 0) {
        outputs.push_back(primary->output);
    }
    const xcb_randr_output_t* const all = xcb_randr_get_screen_resources_current_outputs(resources.get());
    outputs.insert(outputs.end(), all, all + xcb_randr_get_screen_resources_current_outputs_length(resources.get()));
    XReply<xcb_randr_get_output_info_reply_t> output;
    for (const xcb_randr_output_t id : outputs) {
        output.reset(xcb_randr_get_output_info_reply(xcb_, xcb_randr_get_output_info(xcb_, id, configTime_), nullptr));
        if (output && output->crtc != 0) {
            break;
        }
        output.reset();
    }
    if (!output) {
        return;
    }
    crtc_ = output->crtc;
    name_ =
        Sanitised(xcb_randr_get_output_info_name(output.get()), xcb_randr_get_output_info_name_length(output.get()));

    const std::span offered(xcb_randr_get_output_info_modes(output.get()),
                            static_cast<std::size_t>(xcb_randr_get_output_info_modes_length(output.get())));
    const XReply<xcb_randr_get_crtc_info_reply_t> crtc(
        xcb_randr_get_crtc_info_reply(xcb_, xcb_randr_get_crtc_info(xcb_, crtc_, configTime_), nullptr));
    const xcb_randr_mode_info_t* const infos = xcb_randr_get_screen_resources_current_modes(resources.get());
    const int infoCount = xcb_randr_get_screen_resources_current_modes_length(resources.get());
    for (int i = 0; i < infoCount; ++i) {
        const xcb_randr_mode_info_t& info = infos[i];
        if (crtc && info.id == crtc->mode) {
            refreshHz_ = RefreshOf(info);
        }
        if (std::find(offered.begin(), offered.end(), info.id) != offered.end()) {
            modes_.push_back({info.id, info.width, info.height, RefreshOf(info)});
        }
    }
    if (crtc) {
        const xcb_randr_output_t* const shown = xcb_randr_get_crtc_info_outputs(crtc.get());
        now_.crtc = crtc_;
        now_.mode = crtc->mode;
        now_.place = {crtc->x, crtc->y};
        now_.rotation = crtc->rotation;
        now_.outputs.assign(shown, shown + xcb_randr_get_crtc_info_outputs_length(crtc.get()));
    }
}

std::wstring X11Modes::Name() {
    Learn();
    return name_;
}

int X11Modes::RefreshHz() {
    Learn();
    return refreshHz_;
}

std::vector<DisplayMode> X11Modes::List(int bitsPerPixel) {
    Learn();
    std::vector<DisplayMode> list;
    for (const Mode& mode : modes_) {
        const bool turned = IsTurned(now_.rotation);
        const DisplayMode one = {turned ? mode.height : mode.width, turned ? mode.width : mode.height, bitsPerPixel,
                                 mode.refreshHz};
        const bool isThere = std::any_of(list.begin(), list.end(), [&](const DisplayMode& other) {
            return other.width == one.width && other.height == one.height && other.refreshHz == one.refreshHz;
        });
        if (!isThere) {
            list.push_back(one);
        }
    }
    return list;
}

SIZE X11Modes::ExtentWith(xcb_randr_crtc_t changed, const RECT& place) {
    SIZE extent = {place.right, place.bottom};
    for (const xcb_randr_crtc_t id : allCrtcs_) {
        if (id == changed) {
            continue;
        }
        const XReply<xcb_randr_get_crtc_info_reply_t> crtc(
            xcb_randr_get_crtc_info_reply(xcb_, xcb_randr_get_crtc_info(xcb_, id, configTime_), nullptr));
        if (crtc && crtc->mode != 0) {
            extent = {std::max<LONG>(extent.cx, crtc->x + crtc->width),
                      std::max<LONG>(extent.cy, crtc->y + crtc->height)};
        }
    }
    return extent;
}

bool X11Modes::Resize(SIZE size, SIZE millimetres) {
    const auto cookie = xcb_randr_set_screen_size_checked(
        xcb_, connection_.Root(), static_cast<std::uint16_t>(size.cx), static_cast<std::uint16_t>(size.cy),
        static_cast<std::uint32_t>(millimetres.cx), static_cast<std::uint32_t>(millimetres.cy));
    return !XReply<xcb_generic_error_t>(xcb_request_check(xcb_, cookie)) && connection_.IsAlive();
}

// The screen must hold all that is shown on it at every moment, so it grows before and shrinks after.
bool X11Modes::Apply(const Setting& setting, SIZE extent) {
    const XReply<xcb_get_geometry_reply_t> root(
        xcb_get_geometry_reply(xcb_, xcb_get_geometry(xcb_, connection_.Root()), nullptr));
    if (!root) {
        return false;
    }
    const SIZE both = {std::max<LONG>(extent.cx, root->width), std::max<LONG>(extent.cy, root->height)};
    if ((both.cx != root->width || both.cy != root->height) && !Resize(both, MillimetresOf(both))) {
        return false;
    }
    const auto cookie = xcb_randr_set_crtc_config(
        xcb_, setting.crtc, XCB_CURRENT_TIME, configTime_, static_cast<std::int16_t>(setting.place.x),
        static_cast<std::int16_t>(setting.place.y), setting.mode, setting.rotation,
        static_cast<std::uint32_t>(setting.outputs.size()), setting.outputs.data());
    const XReply<xcb_randr_set_crtc_config_reply_t> reply(xcb_randr_set_crtc_config_reply(xcb_, cookie, nullptr));
    Forget();
    if (!reply || reply->status != XCB_RANDR_SET_CONFIG_SUCCESS) {
        Resize({root->width, root->height}, MillimetresOf({root->width, root->height}));
        return false;
    }
    return (both.cx == extent.cx && both.cy == extent.cy) || Resize(extent, setting.millimetres);
}

bool X11Modes::Set(int width, int height, int refreshHz) {
    Learn();
    if (IsTurned(now_.rotation)) {
        std::swap(width, height);
    }
    const Mode* best = nullptr;
    for (const Mode& mode : modes_) {
        const bool fits = mode.width == width && mode.height == height &&
                          (refreshHz == 0 || mode.refreshHz == 0 || mode.refreshHz == refreshHz);
        if (fits && (best == nullptr || mode.refreshHz > best->refreshHz)) {
            best = &mode;
        }
    }
    const XReply<xcb_get_geometry_reply_t> root(
        xcb_get_geometry_reply(xcb_, xcb_get_geometry(xcb_, connection_.Root()), nullptr));
    if (best == nullptr || crtc_ == 0 || now_.mode == 0 || !root) {
        return false;
    }
    if (best->id == now_.mode) {
        return true;
    }
    Setting before = now_;
    before.screen = {root->width, root->height};
    before.millimetres = MillimetresOf(before.screen);
    Setting wanted = now_;
    wanted.mode = best->id;
    const int shownWidth = IsTurned(now_.rotation) ? best->height : best->width;
    const int shownHeight = IsTurned(now_.rotation) ? best->width : best->height;
    const SIZE extent =
        ExtentWith(crtc_, {now_.place.x, now_.place.y, now_.place.x + shownWidth, now_.place.y + shownHeight});
    wanted.millimetres = MillimetresOf(extent);

    // Nobody else may rearrange the screens in between.
    xcb_grab_server(xcb_);
    const bool set = Apply(wanted, extent);
    xcb_ungrab_server(xcb_);
    xcb_flush(xcb_);
    if (set && !before_) {
        before_ = before;
    }
    return set;
}

bool X11Modes::Restore() {
    if (!before_) {
        return true;
    }
    Learn();
    xcb_grab_server(xcb_);
    const bool restored = Apply(*before_, before_->screen);
    xcb_ungrab_server(xcb_);
    xcb_flush(xcb_);
    if (restored) {
        before_.reset();
    }
    return restored;
}

}   // namespace rastel::platform

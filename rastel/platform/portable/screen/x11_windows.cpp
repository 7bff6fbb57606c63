#include "rastel/platform/portable/screen/x11_windows.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace rastel::platform {

namespace {

std::span<const xcb_window_t> ChildrenOf(const xcb_query_tree_reply_t& tree) {
    return {xcb_query_tree_children(&tree), static_cast<std::size_t>(xcb_query_tree_children_length(&tree))};
}

}   // namespace

X11Windows::X11Windows(X11Connection& connection)
    : connection_(connection),
      xcb_(connection.Get()),
      compositor_(connection.Atom("_NET_WM_CM_S" + std::to_string(connection.ScreenNumber()))) {}

X11Windows::Question X11Windows::Ask(xcb_window_t window) {
    const xcb_window_t root = connection_.Root();
    Question question;
    question.geometry = xcb_get_geometry(xcb_, window);
    question.origin = xcb_translate_coordinates(xcb_, window, root, 0, 0);
    question.attributes = xcb_get_window_attributes(xcb_, window);
    question.screen = xcb_get_geometry(xcb_, root);
    return question;
}

std::optional<X11WindowFacts> X11Windows::Answer(xcb_window_t window, const Question& question) {
    const XReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(xcb_, question.geometry, nullptr));
    const XReply<xcb_translate_coordinates_reply_t> origin(
        xcb_translate_coordinates_reply(xcb_, question.origin, nullptr));
    const XReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(xcb_, question.attributes, nullptr));
    const XReply<xcb_get_geometry_reply_t> screen(xcb_get_geometry_reply(xcb_, question.screen, nullptr));
    if (!geometry || !origin || !attributes || !screen || !origin->same_screen) {
        return std::nullopt;
    }
    X11WindowFacts facts;
    facts.window = window;
    facts.client = {origin->dst_x, origin->dst_y, origin->dst_x + geometry->width, origin->dst_y + geometry->height};
    facts.screen = {screen->width, screen->height};
    facts.place = {geometry->x, geometry->y};
    facts.border = geometry->border_width;
    facts.depth = geometry->depth;
    facts.visual = attributes->visual;
    facts.colormap = attributes->colormap;
    facts.isViewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    facts.hasPixels = attributes->_class != XCB_WINDOW_CLASS_INPUT_ONLY;
    return facts;
}

void X11Windows::Forget(bool andParents) {
    known_.clear();
    if (andParents) {
        watched_.clear();
    }
}

// Asks to be told of changes to the window and to all that it lies in, before anything about it is asked: what happens
// in between is told as well. Of windows beside it only the first that covers some of it is told, and that is enough.
void X11Windows::Watch(xcb_window_t window) {
    constexpr std::uint32_t ofItself = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    constexpr std::uint32_t ofAll = ofItself | XCB_EVENT_MASK_VISIBILITY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY |
                                    XCB_EVENT_MASK_COLOR_MAP_CHANGE;
    const xcb_window_t root = connection_.Root();
    if (!watched_.insert(window).second) {
        return;
    }
    const auto select = [this](xcb_window_t of, std::uint32_t mask) {
        xcb_change_window_attributes(xcb_, of, XCB_CW_EVENT_MASK, &mask);
    };
    select(root, ofItself);
    if (window == root) {
        return;
    }
    select(window, ofAll);
    for (xcb_window_t inner = window;;) {
        const XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(xcb_, xcb_query_tree(xcb_, inner), nullptr));
        if (!tree) {
            watched_.erase(window);   // there is no such window
            return;
        }
        if (tree->parent == root || tree->parent == XCB_NONE) {
            return;
        }
        inner = tree->parent;
        if (watched_.count(inner) == 0) {
            select(inner, ofItself);
        }
    }
}

std::optional<X11WindowFacts> X11Windows::Find(xcb_window_t window) {
    if (const auto found = known_.find(window); found != known_.end()) {
        return found->second.facts;
    }
    constexpr std::size_t most = 200;
    if (known_.size() >= most) {
        Forget(true);
    }
    const SigpipeGuard guard;
    Watch(window);
    const std::optional<X11WindowFacts> facts = Answer(window, Ask(window));
    if (facts) {
        known_[window] = {*facts};
    }
    return facts;
}

std::optional<Region> X11Windows::VisibleArea(xcb_window_t window) {
    const std::optional<X11WindowFacts> facts = Find(window);
    if (!facts) {
        return std::nullopt;
    }
    Known& known = known_[window];
    if (known.isWhole) {
        return Region(facts->client);
    }
    const SigpipeGuard guard;
    const std::optional<Region> visible = AskVisibleArea(window);
    known.isWhole = visible && facts->isViewable && *visible == Region(facts->client);
    return visible;
}

std::optional<Region> X11Windows::AskVisibleArea(xcb_window_t asked) {
    // One round trip for all that is needed of a window that lies right on the screen, a second one for the windows
    // that may cover it.
    const xcb_window_t root = connection_.Root();
    const Question question = Ask(asked);
    const auto treeCookie = xcb_query_tree(xcb_, asked);
    const auto rootTreeCookie = xcb_query_tree(xcb_, root);
    const auto ownerCookie = xcb_get_selection_owner(xcb_, compositor_);
    const std::optional<X11WindowFacts> facts = Answer(asked, question);
    XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(xcb_, treeCookie, nullptr));
    XReply<xcb_query_tree_reply_t> rootTree(xcb_query_tree_reply(xcb_, rootTreeCookie, nullptr));
    const XReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(xcb_, ownerCookie, nullptr));
    if (!facts || !tree || !rootTree) {
        return std::nullopt;
    }
    if (!facts->isViewable || !facts->hasPixels) {
        return Region();
    }
    Region visible(facts->client);
    visible.Intersect(RECT{0, 0, facts->screen.cx, facts->screen.cy});
    if (asked == root || visible.IsEmpty()) {
        return visible;
    }

    const bool isComposited = owner && owner->owner != XCB_NONE;
    std::vector<Cover> covers;
    xcb_window_t window = asked;
    POINT origin = {facts->client.left, facts->client.top};
    POINT place = facts->place;
    int border = facts->border;
    for (const xcb_window_t child : ChildrenOf(*tree)) {
        covers.push_back({child, origin});
    }
    while (window != root) {
        const xcb_window_t parent = tree->parent;
        XReply<xcb_get_geometry_reply_t> geometry;
        if (parent == root) {
            tree = std::move(rootTree);
        } else {
            const auto geometryCookie = xcb_get_geometry(xcb_, parent);
            tree.reset(xcb_query_tree_reply(xcb_, xcb_query_tree(xcb_, parent), nullptr));
            geometry.reset(xcb_get_geometry_reply(xcb_, geometryCookie, nullptr));
            if (!tree || !geometry) {
                return Region();   // it is being taken apart
            }
        }
        origin = {origin.x - border - place.x, origin.y - border - place.y};
        if (parent != root || !isComposited) {
            const auto siblings = ChildrenOf(*tree);   // from the lowest to the highest
            auto above = std::find(siblings.begin(), siblings.end(), window);
            for (above += above != siblings.end() ? 1 : 0; above != siblings.end(); ++above) {
                covers.push_back({*above, origin});
            }
        }
        if (parent != root) {
            visible.Intersect(RECT{origin.x, origin.y, origin.x + geometry->width, origin.y + geometry->height});
            place = {geometry->x, geometry->y};
            border = geometry->border_width;
        }
        window = parent;
    }
    SubtractCovers(covers, &visible);
    return visible;
}

void X11Windows::SubtractCovers(const std::vector<Cover>& covers, Region* visible) {
    // All questions first, so that many windows cost one round trip.
    struct CoverQuestion {
        xcb_get_geometry_cookie_t geometry;
        xcb_get_window_attributes_cookie_t attributes;
    };
    std::vector<CoverQuestion> questions;
    questions.reserve(covers.size());
    for (const Cover& cover : covers) {
        const auto geometry = xcb_get_geometry(xcb_, cover.window);
        questions.push_back({geometry, xcb_get_window_attributes(xcb_, cover.window)});
    }
    for (std::size_t i = 0; i < covers.size(); ++i) {
        const XReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(xcb_, questions[i].geometry, nullptr));
        const XReply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(xcb_, questions[i].attributes, nullptr));
        if (!geometry || !attributes || attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY ||
            attributes->map_state != XCB_MAP_STATE_VIEWABLE) {
            continue;
        }
        const LONG left = covers[i].origin.x + geometry->x;
        const LONG top = covers[i].origin.y + geometry->y;
        const int borders = 2 * geometry->border_width;
        visible->Subtract(RECT{left, top, left + geometry->width + borders, top + geometry->height + borders});
    }
}

}   // namespace rastel::platform

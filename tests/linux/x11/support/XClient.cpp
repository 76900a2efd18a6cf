#include "XClient.h"

#include <xcb/shape.h>

#include <array>
#include <cstring>
#include <stdexcept>

namespace orrivane::x11 {

namespace {

template <typename T>
Owned<T> owned(T* reply) {
    return Owned<T>(reply);
}

xcb_rectangle_t rectangle(const PixelRect& rect) {
    return {static_cast<std::int16_t>(rect.x), static_cast<std::int16_t>(rect.y),
            static_cast<std::uint16_t>(rect.width), static_cast<std::uint16_t>(rect.height)};
}

} // namespace

XClient::XClient(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr))
    , screen_(nullptr) {
    if (xcb_connection_has_error(connection_) != 0)
        throw std::runtime_error("no connection to " + display);
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
}

XClient::~XClient() {
    leave();
}

void XClient::leave() {
    if (connection_)
        xcb_disconnect(connection_);
    connection_ = nullptr;
}

void XClient::require(xcb_void_cookie_t cookie, const std::string& what) {
    if (const auto error = owned(xcb_request_check(connection_, cookie)))
        throw std::runtime_error("the server refused " + what + ": error " +
                                 std::to_string(error->error_code));
}

void XClient::sync() {
    owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

xcb_atom_t XClient::atom(const std::string& name) {
    if (const auto known = atoms_.find(name); known != atoms_.end())
        return known->second;
    const auto reply = owned(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
        nullptr));
    if (!reply)
        throw std::runtime_error("no atom " + name);
    return atoms_[name] = reply->atom;
}

std::pair<xcb_visualid_t, xcb_colormap_t> XClient::visualOf(std::uint8_t depth) {
    if (depth != 32)
        return {screen_->root_visual, screen_->default_colormap};
    for (auto depths = xcb_screen_allowed_depths_iterator(screen_);
         depths.rem > 0 && deepVisual_ == XCB_NONE; xcb_depth_next(&depths))
        if (depths.data->depth == 32 && depths.data->visuals_len > 0)
            deepVisual_ = xcb_depth_visuals(depths.data)->visual_id;
    if (deepVisual_ == XCB_NONE)
        throw std::runtime_error("the server has no visual of 32 bits");
    if (deepColours_ == XCB_NONE) {
        deepColours_ = xcb_generate_id(connection_);
        require(xcb_create_colormap_checked(connection_, XCB_COLORMAP_ALLOC_NONE, deepColours_,
                                            root(), deepVisual_),
                "a colour map");
    }
    return {deepVisual_, deepColours_};
}

xcb_window_t XClient::create(const NewWindow& options) {
    const auto id = xcb_generate_id(connection_);
    createAs(id, options);
    return id;
}

void XClient::createAs(xcb_window_t id, const NewWindow& options) {
    const auto place = rectangle(options.area);
    const auto border = static_cast<std::uint16_t>(options.border);
    const auto parent = options.parent == XCB_NONE ? root() : options.parent;
    const std::uint32_t redirect = options.overrideRedirect ? 1 : 0;
    depths_[id] = options.inputOnly ? std::uint8_t{0} : options.depth;
    if (options.inputOnly) {
        require(xcb_create_window_checked(connection_, 0, id, parent, place.x, place.y, place.width,
                                          place.height, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                                          XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                                          &redirect),
                "an input-only window");
        return;
    }
    const auto [visual, colours] = visualOf(options.depth);
    const std::array<std::uint32_t, 4> values{options.background, 0, redirect, colours};
    require(xcb_create_window_checked(connection_, options.depth, id, parent, place.x, place.y,
                                      place.width, place.height, border,
                                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL |
                                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP,
                                      values.data()),
            "a window");
}

void XClient::destroy(xcb_window_t window) {
    require(xcb_destroy_window_checked(connection_, window), "the end of a window");
}

void XClient::map(xcb_window_t window) {
    require(xcb_map_window_checked(connection_, window), "mapping");
}

void XClient::unmap(xcb_window_t window) {
    require(xcb_unmap_window_checked(connection_, window), "unmapping");
}

void XClient::move(xcb_window_t window, const PixelRect& area) {
    const std::array<std::uint32_t, 4> values{
        static_cast<std::uint32_t>(area.x), static_cast<std::uint32_t>(area.y),
        static_cast<std::uint32_t>(area.width), static_cast<std::uint32_t>(area.height)};
    require(xcb_configure_window_checked(connection_, window,
                                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y |
                                             XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                                         values.data()),
            "moving");
}

void XClient::setBorder(xcb_window_t window, int width) {
    const auto value = static_cast<std::uint32_t>(width);
    require(
        xcb_configure_window_checked(connection_, window, XCB_CONFIG_WINDOW_BORDER_WIDTH, &value),
        "a border");
}

void XClient::reparent(xcb_window_t window, xcb_window_t parent, int x, int y) {
    require(xcb_reparent_window_checked(connection_, window, parent, static_cast<std::int16_t>(x),
                                        static_cast<std::int16_t>(y)),
            "a new parent");
}

void XClient::restack(xcb_window_t window, bool above, xcb_window_t sibling) {
    const std::uint32_t mode = above ? XCB_STACK_MODE_ABOVE : XCB_STACK_MODE_BELOW;
    const std::array<std::uint32_t, 2> values{sibling == XCB_NONE ? mode : sibling, mode};
    const auto mask = static_cast<std::uint16_t>(
        sibling == XCB_NONE ? XCB_CONFIG_WINDOW_STACK_MODE
                            : XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE);
    require(xcb_configure_window_checked(connection_, window, mask, values.data()), "restacking");
}

void XClient::circulate(xcb_window_t parent, bool raiseLowest) {
    const auto direction = static_cast<std::uint8_t>(raiseLowest ? XCB_CIRCULATE_RAISE_LOWEST
                                                                 : XCB_CIRCULATE_LOWER_HIGHEST);
    require(xcb_circulate_window_checked(connection_, direction, parent), "circulating");
}

void XClient::shapeBounding(xcb_window_t window, const PixelRect& rect) {
    const auto area = rectangle(rect);
    require(xcb_shape_rectangles_checked(connection_, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                                         XCB_CLIP_ORDERING_UNSORTED, window, 0, 0, 1, &area),
            "a shape");
}

void XClient::unshapeBounding(xcb_window_t window) {
    require(xcb_shape_mask_checked(connection_, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, window, 0,
                                   0, XCB_PIXMAP_NONE),
            "the end of a shape");
}

std::vector<PixelRect> XClient::inputShape(xcb_window_t window) {
    const auto reply = owned(xcb_shape_get_rectangles_reply(
        connection_, xcb_shape_get_rectangles(connection_, window, XCB_SHAPE_SK_INPUT), nullptr));
    if (!reply)
        throw std::runtime_error("no input shape");
    std::vector<PixelRect> result;
    const auto* first = xcb_shape_get_rectangles_rectangles(reply.get());
    for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i)
        result.push_back({first[i].x, first[i].y, first[i].width, first[i].height});
    return result;
}

void XClient::paint(xcb_window_t window, int width, int height,
                    const std::vector<std::uint32_t>& pixels) {
    const auto context = xcb_generate_id(connection_);
    require(xcb_create_gc_checked(connection_, context, window, 0, nullptr), "a brush");
    require(xcb_put_image_checked(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window, context,
                                  static_cast<std::uint16_t>(width),
                                  static_cast<std::uint16_t>(height), 0, 0, 0, depths_.at(window),
                                  static_cast<std::uint32_t>(pixels.size() * 4),
                                  reinterpret_cast<const std::uint8_t*>(pixels.data())),
            "painting");
    xcb_free_gc(connection_, context);
}

void XClient::listen(xcb_window_t window, std::uint32_t events) {
    require(xcb_change_window_attributes_checked(connection_, window, XCB_CW_EVENT_MASK, &events),
            "listening");
}

int XClient::count(std::uint8_t type, xcb_window_t window) {
    sync();
    while (auto event = owned(xcb_poll_for_event(connection_)))
        events_.push_back(std::move(event));
    int found = 0;
    for (const auto& event : events_) {
        // Button, map and configure events alike name the window they are told to here or next.
        std::array<xcb_window_t, 4> words{};
        std::memcpy(words.data(), event.get(), sizeof words);
        const bool isButton = type == XCB_BUTTON_PRESS || type == XCB_BUTTON_RELEASE;
        found += event->response_type == type && words[isButton ? 3 : 1] == window ? 1 : 0;
    }
    return found;
}

void XClient::grab() {
    require(xcb_grab_server_checked(connection_), "a grab");
}

void XClient::ungrab() {
    require(xcb_ungrab_server_checked(connection_), "the end of a grab");
}

} // namespace orrivane::x11

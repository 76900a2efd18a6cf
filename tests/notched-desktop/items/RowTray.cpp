// A tray of the fewest parts: a bar along the top that puts its items edge to edge from the right
// at the width they ask for. RowTray HEIGHT SPACING BACKGROUND FOREGROUND (pixels; 0xRRGGBB)
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include <xcb/xcb.h>

namespace {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Owned = std::unique_ptr<T, FreeDeleter>;

class RowTray {
  public:
    RowTray(std::uint16_t height, std::uint16_t spacing, std::uint32_t background,
            std::uint32_t foreground)
        : connection_(xcb_connect(nullptr, nullptr))
        , height_(height)
        , spacing_(spacing) {
        if (xcb_connection_has_error(connection_) != 0)
            std::exit(1);
        screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        makeBar(background);
        const std::uint32_t colors[] = {background, foreground};
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, bar_, atom("_ORRIVANE_BAR_COLORS"),
                            XCB_ATOM_CARDINAL, 32, 2, colors);
        const std::uint32_t metrics[] = {spacing, 14};
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, bar_,
                            atom("_ORRIVANE_ITEM_METRICS"), XCB_ATOM_CARDINAL, 32, 2, metrics);
        announce();
    }

    int run() {
        while (const Owned<xcb_generic_event_t> event{xcb_wait_for_event(connection_)}) {
            const auto type = event->response_type & 0x7f;
            if (type == XCB_CLIENT_MESSAGE) {
                xcb_client_message_event_t message;
                std::memcpy(&message, event.get(), sizeof message);
                if (message.type == atom("_NET_SYSTEM_TRAY_OPCODE") && message.data.data32[1] == 0)
                    embed(message.data.data32[2]);
            } else if (type == XCB_DESTROY_NOTIFY) {
                xcb_destroy_notify_event_t gone;
                std::memcpy(&gone, event.get(), sizeof gone);
                std::erase_if(items_, [&](const Item& item) { return item.id == gone.window; });
                layOut();
            }
        }
        return 0;
    }

  private:
    struct Item {
        xcb_window_t id;
        std::uint32_t width;
    };

    xcb_atom_t atom(const char* name) {
        const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
            connection_,
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name),
            nullptr));
        return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }

    void makeBar(std::uint32_t background) {
        bar_ = xcb_generate_id(connection_);
        // Not the colour it tells: what an item leaves out shows.
        const std::uint32_t values[] = {~background & 0xffffffU,
                                        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, bar_, screen_->root, 0, 0,
                          screen_->width_in_pixels, height_, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
        const xcb_atom_t dock = atom("_NET_WM_WINDOW_TYPE_DOCK");
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, bar_, atom("_NET_WM_WINDOW_TYPE"),
                            XCB_ATOM_ATOM, 32, 1, &dock);
        xcb_map_window(connection_, bar_);
    }

    void announce() {
        const xcb_atom_t selection = atom("_NET_SYSTEM_TRAY_S0");
        xcb_set_selection_owner(connection_, bar_, selection, XCB_CURRENT_TIME);
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = screen_->root;
        message.type = atom("MANAGER");
        message.data.data32[1] = selection;
        message.data.data32[2] = bar_;
        xcb_send_event(connection_, 0, screen_->root, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&message));
        xcb_flush(connection_);
    }

    // WM_NORMAL_HINTS: flags, then at 5 the least size and at 15 the base size.
    std::uint32_t widthOf(xcb_window_t id) {
        constexpr std::uint32_t leastFlag = 1U << 4;
        constexpr std::uint32_t baseFlag = 1U << 8;
        const Owned<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(connection_,
                                   xcb_get_property(connection_, 0, id, XCB_ATOM_WM_NORMAL_HINTS,
                                                    XCB_GET_PROPERTY_TYPE_ANY, 0, 18),
                                   nullptr));
        if (!reply || reply->value_len < 17)
            return 16;
        const auto* hints = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
        return hints[0] & baseFlag ? hints[15] : hints[0] & leastFlag ? hints[5] : 16;
    }

    void embed(xcb_window_t id) {
        xcb_change_save_set(connection_, XCB_SET_MODE_INSERT, id);
        xcb_reparent_window(connection_, id, bar_, 0, 0);
        items_.push_back({id, widthOf(id) + spacing_});
        layOut();
        xcb_map_window(connection_, id);
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = id;
        message.type = atom("_XEMBED");
        message.data.data32[3] = bar_;
        xcb_send_event(connection_, 0, id, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&message));
        xcb_flush(connection_);
    }

    void layOut() {
        std::uint32_t x = screen_->width_in_pixels;
        for (const Item& item : items_) {
            x -= item.width;
            const std::uint32_t values[] = {x, 0, item.width, height_};
            xcb_configure_window(connection_, item.id,
                                 XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y |
                                     XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                                 values);
        }
        xcb_flush(connection_);
    }

    xcb_connection_t* connection_;
    xcb_screen_t* screen_ = nullptr;
    xcb_window_t bar_ = 0;
    std::uint16_t height_;
    std::uint16_t spacing_;
    std::vector<Item> items_;
};

std::uint32_t number(const char* text) {
    return static_cast<std::uint32_t>(std::strtoul(text, nullptr, 0));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5)
        return 2;
    return RowTray(static_cast<std::uint16_t>(number(argv[1])),
                   static_cast<std::uint16_t>(number(argv[2])), number(argv[3]), number(argv[4]))
        .run();
}

#include "ClientWindow.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace orrivane::e2e {

namespace {

constexpr std::uint32_t hasMinimum = 1U << 4;
constexpr std::uint32_t hasBase = 1U << 8;
constexpr std::size_t hintWords = 18;

} // namespace

ClientWindow::ClientWindow(const std::string& display, const Options& options)
    : connection_(xcb_connect(display.c_str(), nullptr)) {
    if (xcb_connection_has_error(connection_) != 0)
        throw std::runtime_error("no connection to " + display);
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    root_ = screen->root;
    id_ = xcb_generate_id(connection_);
    const std::uint32_t values[] = {0x884422, options.overrideRedirect ? 1U : 0U,
                                    XCB_EVENT_MASK_BUTTON_PRESS};
    require(xcb_create_window_checked(
                connection_, XCB_COPY_FROM_PARENT, id_, root_, 0, 200,
                static_cast<std::uint16_t>(options.width),
                static_cast<std::uint16_t>(options.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                XCB_COPY_FROM_PARENT,
                XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values),
            "making a window");
    setBytes("WM_CLASS", "STRING", options.className + '\0' + options.className + '\0');
    setWords("WM_PROTOCOLS", XCB_ATOM_ATOM, {atom("WM_DELETE_WINDOW")});
    if (options.declaresWidth)
        declareWidth(options.width);
}

ClientWindow::~ClientWindow() {
    end();
}

void ClientWindow::end() {
    if (connection_ != nullptr)
        xcb_disconnect(connection_);
    connection_ = nullptr;
}

void ClientWindow::require(xcb_void_cookie_t cookie, const std::string& what) {
    xcb_generic_error_t* error = xcb_request_check(connection_, cookie);
    std::free(error);
    if (error != nullptr)
        throw std::runtime_error("the X server refused: " + what);
}

xcb_atom_t ClientWindow::atom(const std::string& name) {
    auto* reply = xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr);
    if (reply == nullptr)
        throw std::runtime_error("no atom " + name);
    const xcb_atom_t result = reply->atom;
    std::free(reply);
    return result;
}

void ClientWindow::setWords(const std::string& property, xcb_atom_t type,
                            const std::vector<std::uint32_t>& words) {
    require(xcb_change_property_checked(connection_, XCB_PROP_MODE_REPLACE, id_, atom(property),
                                        type, 32, static_cast<std::uint32_t>(words.size()),
                                        words.data()),
            "setting " + property);
}

void ClientWindow::setBytes(const std::string& property, const std::string& type,
                            const std::string& bytes) {
    require(xcb_change_property_checked(connection_, XCB_PROP_MODE_REPLACE, id_, atom(property),
                                        atom(type), 8, static_cast<std::uint32_t>(bytes.size()),
                                        bytes.data()),
            "setting " + property);
}

void ClientWindow::declareWidth(int width) {
    std::vector<std::uint32_t> hints(hintWords, 0);
    hints[0] = hasMinimum | hasBase;
    hints[5] = hints[15] = static_cast<std::uint32_t>(width);
    hints[6] = hints[16] = 20;
    setWords("WM_NORMAL_HINTS", atom("WM_SIZE_HINTS"), hints);
}

void ClientWindow::askForWidth(int width) {
    const auto value = static_cast<std::uint32_t>(width);
    require(xcb_configure_window_checked(connection_, id_, XCB_CONFIG_WINDOW_WIDTH, &value),
            "asking for a width");
}

void ClientWindow::wantToShow(bool shown) {
    setWords("_XEMBED_INFO", atom("_XEMBED_INFO"), {0, shown ? 1U : 0U});
}

void ClientWindow::dock() {
    wantToShow(true);
    askToDock(id_);
}

void ClientWindow::askToDock(xcb_window_t window) {
    auto* owner = xcb_get_selection_owner_reply(
        connection_, xcb_get_selection_owner(connection_, atom("_NET_SYSTEM_TRAY_S0")), nullptr);
    const xcb_window_t tray = owner != nullptr ? owner->owner : xcb_window_t{0};
    std::free(owner);
    if (tray == 0)
        throw std::runtime_error("there is no tray");
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = tray;
    message.type = atom("_NET_SYSTEM_TRAY_OPCODE");
    message.data.data32[2] = window;
    require(xcb_send_event_checked(connection_, 0, tray, XCB_EVENT_MASK_NO_EVENT,
                                   reinterpret_cast<const char*>(&message)),
            "asking for a place in the tray");
}

void ClientWindow::moveToRoot() {
    require(xcb_reparent_window_checked(connection_, id_, root_, 0, 200), "leaving the tray");
}

void ClientWindow::map() {
    require(xcb_map_window_checked(connection_, id_), "showing a window");
}

void ClientWindow::publishMenus(const std::string& text) {
    setBytes("_ORRIVANE_APP_MENUS", "UTF8_STRING", text);
}

void ClientWindow::readEvents() {
    using Event = std::unique_ptr<xcb_generic_event_t, decltype(&std::free)>;
    while (const Event event{xcb_poll_for_event(connection_), &std::free}) {
        const int type = event->response_type & 0x7f;
        presses_ += type == XCB_BUTTON_PRESS ? 1 : 0;
        if (type == XCB_CLIENT_MESSAGE)
            messages_.push_back(*reinterpret_cast<xcb_client_message_event_t*>(event.get()));
    }
}

int ClientWindow::presses() {
    readEvents();
    return presses_;
}

std::vector<std::array<std::uint32_t, 5>> ClientWindow::messages(const std::string& type) {
    readEvents();
    const xcb_atom_t wanted = atom(type);
    std::vector<std::array<std::uint32_t, 5>> result;
    for (const auto& message : messages_)
        if (message.type == wanted) {
            auto& numbers = result.emplace_back();
            std::copy_n(message.data.data32, numbers.size(), numbers.begin());
        }
    return result;
}

} // namespace orrivane::e2e

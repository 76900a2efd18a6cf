#include <linux/x11/X11PanelStage.h>

#include <algorithm>
#include <array>
#include <utility>

namespace orrivane::x11 {

namespace {
constexpr std::uint8_t sentBit = 0x80;
}

X11PanelStage::X11PanelStage(Connection& connection, MainLoop& loop, X11Screens& screens,
                             WindowTree& tree, StatusItems& items, Presser& presser)
    : connection_(connection)
    , loop_(loop)
    , screens_(screens)
    , tree_(tree)
    , items_(items)
    , presser_(presser)
    , reader_(connection)
    , redirection_(connection)
    , look_(loop, [this] { lookAgain(); })
    , events_(connection.onEvent([this](const xcb_generic_event_t& event) {
        const bool destroyed =
            event.response_type == XCB_DESTROY_NOTIFY &&
            reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == compositor_;
        // A compositor that starts tells the root with a message.
        if (destroyed || (event.response_type & ~sentBit) == XCB_CLIENT_MESSAGE)
            compositorKnown_ = false;
        if (panel_ != 0 && (!compositorKnown_ || tree_.generation() != lastGeneration_))
            look_.request();
    })) {}

void X11PanelStage::adopt(std::uint32_t window) {
    panel_ = window;
    items_.addOwnClient(connection_.clientOf(window));
    presser_.setPanel(window);
    look_.request(); // what holds now is what changes are measured by
}

std::uint32_t X11PanelStage::dockTopLevel() {
    const auto* dock = items_.dock();
    const auto* top = dock ? tree_.topLevel(*dock) : nullptr;
    return top ? top->id : 0;
}

void X11PanelStage::place(const PixelRect& rect) {
    if (panel_ == 0)
        return;
    const auto configure = [&](std::uint32_t sibling) {
        // The server refuses windows without extent.
        const std::array<std::uint32_t, 6> values{
            static_cast<std::uint32_t>(rect.x),
            static_cast<std::uint32_t>(rect.y),
            static_cast<std::uint32_t>(std::max(rect.width, 1)),
            static_cast<std::uint32_t>(std::max(rect.height, 1)),
            sibling,
            XCB_STACK_MODE_ABOVE};
        constexpr std::uint16_t geometry = XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y |
                                           XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
        constexpr std::uint16_t stack = XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE;
        const auto mask = static_cast<std::uint16_t>(sibling != 0 ? geometry | stack : geometry);
        return connection_.succeeded(
            xcb_configure_window_checked(connection_.raw(), panel_, mask, values.data()),
            Connection::deadline());
    };
    // The dock may have gone between the look and the request.
    if (!configure(dockTopLevel()) && connection_.isResponsive())
        configure(0);
}

bool X11PanelStage::dockIsCovered() {
    const auto* dock = items_.dock();
    const auto* top = dock ? tree_.topLevel(*dock) : nullptr;
    return top && items_.isCoveredBy(*top, tree_.rootRect(*dock));
}

bool X11PanelStage::isComposited() {
    if (!compositorKnown_) {
        const auto reply = connection_.wait<xcb_get_selection_owner_reply_t>(
            xcb_get_selection_owner(connection_.raw(), connection_.atom(Atom::compositorSelection)),
            Connection::deadline());
        compositor_ = reply ? reply->owner : 0;
        compositorKnown_ = reply != nullptr;
    }
    return compositor_ != 0;
}

bool X11PanelStage::isDisplaced(const TreeWindow& dockTop) const {
    const auto* panel = tree_.find(panel_);
    if (!panel || !panel->mapped)
        return false;
    const auto above = tree_.above(dockTop);
    return above.empty() || above.front()->id != panel_;
}

X11PanelStage::Situation X11PanelStage::look() {
    Situation situation;
    situation.covered = dockIsCovered();
    situation.composited = isComposited();
    const auto* dock = items_.dock();
    const auto* top = dock ? tree_.topLevel(*dock) : nullptr;
    situation.displaced = top && isDisplaced(*top);
    lastGeneration_ = tree_.generation();
    return situation;
}

void X11PanelStage::lookAgain() {
    const auto situation = look();
    if (situation == last_)
        return;
    last_ = situation;
    changes_.notify();
}

std::vector<int> X11PanelStage::freeColumns(const PixelRect& rect) const {
    std::vector<int> columns;
    for (int x = rect.x; x < rect.right(); ++x) {
        int column = x;
        // Sockets are not wider than what they hold, so the icons tell which columns are taken.
        for (bool moved = true; moved;) {
            moved = false;
            for (const auto& item : items_.lastKnown())
                if (column >= item.rect.x && column < item.rect.right()) {
                    column = item.rect.x - 1;
                    moved = true;
                }
        }
        columns.push_back(column);
    }
    return columns;
}

void X11PanelStage::backdrop(const PixelRect& rect,
                             std::function<void(std::shared_ptr<const PixelImage>)> completion) {
    const auto top = dockTopLevel();
    const auto* window = tree_.find(top);
    if (!window || rect.isEmpty())
        return completion(nullptr);
    if (!redirection_.contains(top, window->serial)) {
        redirection_.begin(top, window->serial);
        settle_ = loop_.wakeUp(Redirection::settleTime, [this] { answerWaiting(); });
    }
    if (settle_)
        waiting_.push_back({rect, std::move(completion)});
    else
        completion(readBackdrop(rect));
}

void X11PanelStage::answerWaiting() {
    settle_.reset();
    for (const auto& [rect, completion] : std::exchange(waiting_, {}))
        completion(readBackdrop(rect));
}

std::shared_ptr<const PixelImage> X11PanelStage::readBackdrop(const PixelRect& rect) {
    const auto* window = tree_.find(dockTopLevel());
    if (!window)
        return nullptr;
    const auto dock = tree_.rootRect(*window);
    const auto columns = freeColumns(rect);
    const int first = std::max(*std::ranges::min_element(columns), dock.x);
    const PixelRect inside{first - dock.x, std::max(rect.y, dock.y) - dock.y,
                           std::min(rect.right(), dock.right()) - first,
                           std::min(rect.bottom(), dock.bottom()) - std::max(rect.y, dock.y)};
    if (inside.isEmpty())
        return nullptr;
    const auto read = reader_.sendRedirected(window->id, window->border, inside);
    const auto pixels = reader_.receive(read, Connection::deadline());
    if (!pixels)
        return nullptr;
    auto image = std::make_shared<PixelImage>(rect.width, rect.height);
    // Where the band is higher than the dock, its last row goes on.
    for (int y = 0; y < rect.height; ++y)
        for (int x = 0; x < rect.width; ++x) {
            const int column =
                std::clamp(columns[static_cast<std::size_t>(x)] - first, 0, inside.width - 1);
            const int row = std::clamp(rect.y + y - dock.y - inside.y, 0, inside.height - 1);
            image->set(x, y, pixels->at(column, row));
        }
    return image;
}

} // namespace orrivane::x11

#include "ItemsStage.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace orrivane::e2e {

namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace

ItemsStage::ItemsStage()
    : server_({.width = 2000, .height = 982, .extraArguments = {}}, directory_.path())
    , observer_(server_.display()) {
    adoptOrphans();
    const std::string runtime = directory_.path() + "/run";
    std::filesystem::create_directory(runtime);
    std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
}

ItemsStage::~ItemsStage() {
    if (HasFailure())
        for (const auto& process : processes_)
            std::cerr << "---- " << process.name() << '\n' << process.log();
    processes_.clear();
    endOrphans();
}

ChildProcess& ItemsStage::start(const std::vector<std::string>& arguments) {
    ChildProcess::Options child;
    child.arguments = arguments;
    child.environment = graphicalEnvironment(server_.display(), directory_.path() + "/home",
                                             directory_.path() + "/run");
    child.environment["ORRIVANE_DESKTOP_LOG"] = directory_.path() + "/choices";
    child.logFile = directory_.path() + "/" + std::to_string(started_++) + ".log";
    return processes_.emplace_back(std::move(child));
}

ChildProcess& ItemsStage::startTray(int height, int gap) {
    auto& tray = start({ORRIVANE_ROW_TRAY, std::to_string(height), std::to_string(gap),
                        std::to_string(background), std::to_string(0x1b1d22)});
    const auto up = waitFor("the tray is there", [&] { return observer_.trayOwner() != 0; });
    if (!up)
        throw std::runtime_error(up.message());
    return tray;
}

ChildProcess& ItemsStage::startItem(const std::string& kind, std::vector<std::string> options) {
    options.insert(options.begin(), ORRIVANE_STATUS_ITEM);
    options.push_back(kind);
    return start(options);
}

std::vector<WindowState> ItemsStage::icons(std::size_t count) {
    return waitForValue<std::vector<WindowState>>(std::to_string(count) + " icons are shown",
                                                  [&]() -> std::optional<std::vector<WindowState>> {
                                                      auto found = observer_.trayIcons();
                                                      for (const auto& each : found)
                                                          if (!each.isViewable() || each.area.x < 0)
                                                              return std::nullopt;
                                                      if (found.size() != count)
                                                          return std::nullopt;
                                                      return found;
                                                  });
}

WindowState ItemsStage::menu() {
    return waitForValue<WindowState>("a menu opens", [&]() -> std::optional<WindowState> {
        const auto popups = observer_.popups();
        // Place and visibility are read one after the other: only what stays is seen whole.
        if (popups.size() != 1 || observer_.popups() != popups)
            return std::nullopt;
        return popups.front();
    });
}

WindowState ItemsStage::openMenu(const WindowState& icon, std::uint8_t button) {
    observer_.click(icon.area.centre(), button);
    return menu();
}

void ItemsStage::closeMenu() {
    const WindowState open = menu();
    observer_.tapKey(keyEscape);
    const auto closed = waitFor("the menu closes", [&] {
        const auto state = observer_.window(open.id);
        return !state || !state->isViewable();
    });
    if (!closed)
        throw std::runtime_error(closed.message());
}

void ItemsStage::chooseEntry(int number) {
    for (int i = 0; i < number; ++i)
        observer_.tapKey(keyDown);
    observer_.tapKey(keyReturn);
}

std::vector<std::string> ItemsStage::choices() const {
    return linesOf(readFile(directory_.path() + "/choices"));
}

testing::AssertionResult ItemsStage::isLogged(const std::vector<std::string>& lines) {
    auto result = waitFor("the choice is logged", [&] { return choices() == lines; });
    if (!result)
        result << "; the record holds " << testing::PrintToString(choices());
    return result;
}

std::vector<ListedKind> ItemsStage::listedKinds() {
    auto& program = start({ORRIVANE_STATUS_ITEM, "--list"});
    if (program.wait(defaultBound) != ExitStatus{0, std::nullopt})
        throw std::runtime_error("--list fails: " + program.log());
    std::vector<ListedKind> kinds;
    for (const auto& line : linesOf(program.log())) {
        ListedKind kind;
        std::istringstream stream(line);
        stream >> kind.id >> kind.width >> kind.icons;
        stream.ignore(1);
        std::getline(stream, kind.name);
        kinds.push_back(kind);
    }
    return kinds;
}

std::optional<std::string> ItemsStage::text(xcb_window_t window, const std::string& property) {
    struct Free {
        void operator()(void* memory) const { std::free(memory); }
    };
    constexpr std::uint32_t most = 16384;
    const auto cookie = xcb_get_property(observer_.connection(), 0, window,
                                         observer_.atom(property), XCB_ATOM_ANY, 0, most);
    const std::unique_ptr<xcb_get_property_reply_t, Free> reply(
        xcb_get_property_reply(observer_.connection(), cookie, nullptr));
    if (!reply || reply->type == XCB_ATOM_NONE || reply->format != 8)
        return std::nullopt;
    return std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                       static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
}

} // namespace orrivane::e2e

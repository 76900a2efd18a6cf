#include <linux/hosts/ForeignHosts.h>

#include <Orrivane/platform/MainLoop.h>
#include <Orrivane/platform/SystemLog.h>
#include <Orrivane/support/Awaiters.h>

#include <linux/hosts/IconNames.h>
#include <linux/hosts/SpacingWish.h>
#include <linux/hosts/Tint2Host.h>
#include <linux/hosts/XfcePanelHost.h>
#include <linux/x11/Owners.h>
#include <linux/x11/StatusItems.h>
#include <linux/x11/X11Screens.h>

#include <algorithm>
#include <utility>

namespace orrivane {

namespace {

constexpr double longestMove = 4; // seconds; two calls of the tool take a hundredth of one

std::string folderOf(const std::string& file) {
    const auto end = file.rfind('/');
    return end == std::string::npos ? std::string() : file.substr(0, end);
}

// The answer is given on the main thread, and the completion dies there.
Task<bool> onQueue(BackgroundQueue& queue, MainLoop& loop, std::function<bool()> work) {
    const auto begin = [&](Completion<bool> completion) {
        queue.post([&loop, work, completion]() mutable {
            const bool result = work();
            loop.post([result, completion = std::move(completion)] { completion(result); });
        });
    };
    const auto answer = co_await Answer<bool>(begin, longestMove);
    co_return answer.value_or(false);
}

} // namespace

ForeignHosts::ForeignHosts(Parts parts, std::string preferenceFile)
    : parts_(std::move(parts))
    , preferenceFile_(std::move(preferenceFile)) {}

ForeignHosts::Present ForeignHosts::present() {
    auto& connection = parts_.connection;
    const auto owner = connection.wait<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(connection.raw(), connection.atom(x11::Atom::traySelection)),
        x11::Connection::deadline());
    if (!owner || owner->owner == XCB_NONE)
        return {};
    auto process = HostProcess::read(x11::Owners(connection).ofStranger(owner->owner).process);
    const auto choice = trayHostOf(process);
    return {std::move(process), choice};
}

std::optional<std::string> ForeignHosts::squeezeLimitation() {
    const auto host = present();
    switch (host.choice.kind) {
    case TrayHostKind::tint2:
        return Tint2Host(HostRecord(recordFile("tint2")))
            .limitation(Tint2Host::configFile(*host.process));
    case TrayHostKind::xfcePanel:
        return XfcePanelHost::limitation();
    case TrayHostKind::none:
        break;
    }
    return std::nullopt;
}

std::optional<std::string> ForeignHosts::arrangeLimitation() {
    if (present().choice.kind == TrayHostKind::xfcePanel)
        return XfcePanelHost::limitation();
    return std::nullopt;
}

void ForeignHosts::restart() {
    queue_.post([this, host = present(), scale = parts_.screens.scale(), seen = measures()] {
        act(MenuBarPreferences::read(preferenceFile_), host, scale, seen);
    });
}

XfceTray::Measures ForeignHosts::measures() {
    XfceTray::Measures result;
    const auto& items = parts_.items.current();
    if (!items.empty())
        result.iconWidth = items.front().rect.width;
    if (const auto* dock = parts_.items.dock())
        result.barHeight = parts_.items.rectOf(*dock).height;
    return result;
}

// On the queue's thread.
void ForeignHosts::act(const MenuBarPreferences& preferences, const Present& host, double scale,
                       const XfceTray::Measures& measures) {
    const Tint2Host tint2{HostRecord(recordFile("tint2"))};
    const XfcePanelHost xfce{HostRecord(recordFile("xfce4-panel"))};
    const auto reduction = wantedReduction(preferences, scale);
    const auto kind = host.choice.kind;
    auto tint2Done = Outcome::success();
    auto xfceDone = Outcome::success();
    if (!reduction) {
        tint2Done = tint2.reset();
        xfceDone = xfce.reset();
    } else if (kind == TrayHostKind::tint2) {
        tint2Done = tint2.apply(Tint2Host::configFile(*host.process), *reduction);
    } else if (kind == TrayHostKind::xfcePanel) {
        xfceDone = xfce.apply(host.choice.plugin, *reduction, measures);
    }
    if (kind == TrayHostKind::tint2 && !Tint2Host::reload(*host.process) && tint2Done)
        tint2Done = Outcome::failure("it could not be told to read its settings again");
    logFailure("tint2", tint2Done);
    logFailure("xfce4-panel", xfceDone);
}

void ForeignHosts::logFailure(const std::string& host, const Outcome& outcome) {
    if (outcome)
        return;
    parts_.loop.post([&log = parts_.log, host, why = outcome.text()] {
        log.write("Orrivane: the spacing of " + host + "'s tray could not be changed: " + why);
    });
}

std::optional<Task<bool>> ForeignHosts::move(const StatusItemWindow& item, double toX) {
    const auto host = present();
    if (host.choice.kind != TrayHostKind::xfcePanel)
        return std::nullopt;
    std::vector<std::uint32_t> windows;
    std::vector<XfceTray::Icon> icons;
    for (const auto& each : parts_.items.current()) {
        windows.push_back(each.window);
        icons.push_back({{}, each.rect.x + each.rect.width / 2.0});
    }
    const auto names = x11::namesOf(parts_.connection, windows);
    for (std::size_t i = 0; i < icons.size(); ++i)
        icons[i].name = parts_.lowered(names[i]);
    const auto moved =
        static_cast<std::size_t>(std::ranges::find(windows, item.id) - windows.begin());
    return onQueue(queue_, parts_.loop,
                   [plugin = host.choice.plugin, file = recordFile("xfce4-panel"), icons, moved,
                    pixels = toX * parts_.screens.scale()] {
                       return XfcePanelHost(HostRecord(file)).reorder(plugin, icons, moved, pixels);
                   });
}

std::string ForeignHosts::recordFile(const std::string& host) const {
    const auto folder = folderOf(preferenceFile_);
    return folder.empty() ? std::string() : folder + "/hosts/" + host;
}

} // namespace orrivane

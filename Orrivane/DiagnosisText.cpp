#include <Orrivane/Diagnosis.h>

#include <Orrivane/support/PlainText.h>

#include <cstddef>

namespace orrivane {

namespace {

std::string number(const std::optional<std::int64_t>& value, const char* absent) {
    return value ? std::to_string(*value) : absent;
}

std::string plain(const Rect& rect) {
    return decimal(rect.size.width) + " x " + decimal(rect.size.height) + " at " +
           decimal(rect.origin.x) + "," + decimal(rect.origin.y);
}

std::string plain(const std::optional<Rect>& rect) {
    return rect ? plain(*rect) : "place unknown";
}

std::string yes(bool value) {
    return value ? "yes" : "no";
}

std::string program(std::string_view name, std::optional<std::int64_t> process) {
    return (name.empty() ? "unknown" : oneLine(name)) + " (" + number(process, "unknown") + ")";
}

std::string program(const std::optional<RunningApplication>& application) {
    if (!application)
        return "unknown";
    return program(application->localizedName.value_or(application->bundleIdentifier.value_or("")),
                   application->processIdentifier);
}

std::string screenLines(const Diagnosis& diagnosis) {
    std::string out = diagnosis.screens.empty() ? "Screen: none\n" : "";
    for (std::size_t i = 0; i < diagnosis.screens.size(); ++i) {
        const auto& screen = diagnosis.screens[i];
        out += "Screen: " + plain(screen.frame) + ", top inset " + decimal(screen.safeAreaTop);
        if (i < diagnosis.screenPlaces.size())
            out += ", free " + plain(diagnosis.screenPlaces[i].visibleFrame) +
                   (diagnosis.screenPlaces[i].isMain ? ", main" : "");
        out += "\n";
    }
    return out;
}

std::string line(const Diagnosis::Item& item) {
    return "  " + std::to_string(item.window.id) + "  " + plain(item.window.frame) + "  " +
           program(item.application, item.process) + "  " +
           (item.window.isEaten ? "hidden" : "visible") +
           (item.window.isOnscreen ? "" : ", off screen") +
           (item.reason.empty() ? ", mirrored" : ", not mirrored: " + item.reason) + "\n";
}

std::string line(const OwnedWindow& entry) {
    return "  " + number(entry.window.number, "no number") + "  layer " +
           number(entry.window.layer, "unknown") + "  " + plain(entry.window.bounds) + "  " +
           program(entry.owner.value_or(""), entry.process) +
           (entry.window.onscreen.value_or(false) ? "" : ", off screen") + "\n";
}

std::string lines(const ExtrasBar& bar) {
    std::string out = "  " + program(bar.application, bar.process) + "  ";
    const auto time = " in " + decimal(bar.milliseconds) + " ms";
    if (!bar.answered)
        return out + "no answer" + time + "\n";
    out += (bar.isThere ? std::to_string(bar.childCount) + " items" : "none") + time + "\n";
    for (const auto& child : bar.children)
        out += "    " + (child.role.empty() ? "no role" : oneLine(child.role)) + "  " +
               plain(child.frame) + "\n";
    if (bar.children.size() < bar.childCount)
        out += "    the rest was not asked: it took too long\n";
    return out;
}

std::string line(const CaptureProbe& probe) {
    auto out = "  " + std::to_string(probe.window) + "  ";
    if (!probe.isInSnapshot)
        return out + "not in the snapshot\n";
    if (!probe.picture)
        return out + "no picture\n";
    out += std::to_string(probe.picture->width) + " x " + std::to_string(probe.picture->height) +
           " pixels";
    if (!probe.picture->isClear)
        return out + ", unread\n";
    return out + (*probe.picture->isClear ? ", all clear\n" : "\n");
}

std::string captureLines(const std::optional<CaptureProbes>& captures) {
    if (!captures)
        return "Captures: none asked for\n";
    if (!captures->snapshotSize)
        return "Captures: there is no snapshot\n";
    auto out =
        "Captures: the snapshot has " + std::to_string(*captures->snapshotSize) + " windows\n";
    for (const auto& probe : captures->windows)
        out += line(probe);
    return out;
}

std::string ownWindowsLine(const std::vector<std::int64_t>& windows) {
    std::string out = "Own windows of this process:";
    for (const auto window : windows)
        out += " " + std::to_string(window);
    return out + (windows.empty() ? " none\n" : "\n");
}

} // namespace

std::string Diagnosis::text() const {
    std::string out = "Orrivane " + version + "\n";
    out += "Version in the bundle: " + oneLine(bundle.version) + ", build " +
           oneLine(bundle.build) + "\n";
    out +=
        "Running: " + (runningProcess ? "yes, process " + std::to_string(*runningProcess) : "no") +
        "\n";
    out += screenLines(*this);
    out += "Screen asleep: " + yes(displayAsleep) + "\n";
    out += notch ? "Notch: from " + decimal(notch->notchMinX) + " to " + decimal(notch->notchMaxX) +
                       ", bar " + decimal(notch->menuBarHeight) + " high\n"
                 : "Notch: none known\n";
    out += "Menus: " + (menuWidth ? decimal(*menuWidth) + " wide" : "width unknown") + "\n";
    out += "Menu bar belongs to: " + program(menuBarOwner) + "\n";
    out += "In front: " + program(frontmost) + "\n";
    out += "Screen capture allowed: " + yes(screenCaptureGranted) + "\n";
    out += "Pressing items allowed: " + yes(accessibilityTrusted) + "\n";
    out += "Tray switched on: " + yes(stripEnabled) + "\n";
    out += "Tray with other screens: " + yes(mirrorOnExternal) + "\n";
    out += "Spacing stored: " + number(spacing, "none") + "\n";
    out += "Padding stored: " + number(padding, "none") + "\n";
    if (const auto why = obstacle(); !why.empty())
        out += "Nothing is mirrored: " + why + "\n";
    out += "Items: " + std::to_string(items.size()) + "\n";
    for (const auto& item : items)
        out += line(item);
    out += "Windows near the top: " + std::to_string(windows.size()) + "\n";
    for (const auto& entry : windows)
        out += line(entry);
    out += ownWindowsLine(ownWindows);
    out += "Programs asked for their items: " + std::to_string(extrasBars.size()) + "\n";
    for (const auto& bar : extrasBars)
        out += lines(bar);
    return out + captureLines(captures);
}

} // namespace orrivane

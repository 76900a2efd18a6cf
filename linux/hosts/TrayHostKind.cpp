#include <linux/hosts/TrayHostKind.h>

#include <linux/support/Text.h>

#include <algorithm>
#include <string_view>

namespace orrivane {

namespace {

std::string_view fileName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

// The panel runs each of its plugins in a process: wrapper-2.0, the plugin's library, its number.
// The process calls itself after the plugin, cut short, so its name says less.
int xfceTrayPlugin(const HostProcess& process) {
    if (process.arguments.size() < 3 || !fileName(process.arguments[0]).starts_with("wrapper-") ||
        fileName(process.arguments[1]) != "libsystray.so" ||
        process.arguments[1].find("/xfce4/panel/") == std::string::npos)
        return 0;
    return std::max(numberIn<int>(process.arguments[2]).value_or(0), 0);
}

} // namespace

TrayHostChoice trayHostOf(const std::optional<HostProcess>& owner) {
    if (!owner)
        return {};
    if (owner->name == "tint2")
        return {TrayHostKind::tint2};
    if (const int plugin = xfceTrayPlugin(*owner); plugin != 0)
        return {TrayHostKind::xfcePanel, plugin};
    return {};
}

} // namespace orrivane

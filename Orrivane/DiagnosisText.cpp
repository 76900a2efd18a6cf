#include <Orrivane/Diagnosis.h>

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace orrivane {

namespace {

// Shortest form, independent of the locale. What is no number is null in JSON.
std::string number(double value) {
    if (!std::isfinite(value))
        return "null";
    if (value == std::trunc(value) && std::abs(value) < 1e15)
        return std::to_string(static_cast<std::int64_t>(value));
    std::array<char, 32> digits{};
    const double hundredths = std::round(value * 100);
    std::string sign = hundredths < 0 ? "-" : "";
    const auto whole = static_cast<std::int64_t>(std::abs(hundredths));
    if (std::abs(hundredths) >= 1e15)
        return "null";
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), whole / 100).ptr;
    std::string fraction = std::to_string(whole % 100);
    if (fraction.size() == 1)
        fraction.insert(0, 1, '0');
    return sign + std::string(digits.data(), end) + "." + fraction;
}

std::string number(const std::optional<std::int64_t>& value, const char* absent) {
    return value ? std::to_string(*value) : absent;
}

std::string quoted(std::string_view text) {
    constexpr std::string_view hex = "0123456789abcdef";
    std::string result = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            result += '\\';
            result += c;
        } else if (byte < 0x20) {
            result += "\\u00";
            result += hex[byte >> 4];
            result += hex[byte & 15];
        } else {
            result += c;
        }
    }
    return result + "\"";
}

std::string truth(bool value) {
    return value ? "true" : "false";
}

std::string list(const Rect& rect) {
    return "[" + number(rect.origin.x) + "," + number(rect.origin.y) + "," +
           number(rect.size.width) + "," + number(rect.size.height) + "]";
}

std::string plain(const Rect& rect) {
    return number(rect.size.width) + " x " + number(rect.size.height) + " at " +
           number(rect.origin.x) + "," + number(rect.origin.y);
}

std::string yes(bool value) {
    return value ? "yes" : "no";
}

std::string list(const std::optional<Rect>& rect) {
    return rect ? list(*rect) : "null";
}

std::string jsonOf(const ScreenDescription& screen) {
    return "{\"frame\":" + list(screen.frame) + ",\"safeAreaTop\":" + number(screen.safeAreaTop) +
           ",\"auxiliaryTopLeftArea\":" + list(screen.auxiliaryTopLeftArea) +
           ",\"auxiliaryTopRightArea\":" + list(screen.auxiliaryTopRightArea) + "}";
}

std::string jsonOf(const NotchInfo& notch) {
    return "{\"screenMinX\":" + number(notch.screenMinX) +
           ",\"screenWidth\":" + number(notch.screenWidth) +
           ",\"menuBarHeight\":" + number(notch.menuBarHeight) +
           ",\"notchMinX\":" + number(notch.notchMinX) +
           ",\"notchMaxX\":" + number(notch.notchMaxX) + "}";
}

std::string jsonOf(const Diagnosis::Item& item) {
    return "{\"id\":" + std::to_string(item.window.id) + ",\"frame\":" + list(item.window.frame) +
           ",\"application\":" + quoted(item.application) +
           ",\"process\":" + std::to_string(item.process) +
           ",\"isOnscreen\":" + truth(item.window.isOnscreen) +
           ",\"isEaten\":" + truth(item.window.isEaten) +
           ",\"isMirrored\":" + truth(item.reason.empty()) + ",\"reason\":" + quoted(item.reason) +
           "}";
}

template <typename Values>
std::string array(const Values& values) {
    std::string result = "[";
    for (const auto& value : values)
        result += (result.size() > 1 ? "," : "") + jsonOf(value);
    return result + "]";
}

} // namespace

std::string Diagnosis::json() const {
    return "{\"version\":" + quoted(version) +
           ",\"runningProcess\":" + number(runningProcess, "null") +
           ",\"screens\":" + array(screens) + ",\"displayAsleep\":" + truth(displayAsleep) +
           ",\"notch\":" + (notch ? jsonOf(*notch) : "null") +
           ",\"menuWidth\":" + (menuWidth ? number(*menuWidth) : "null") +
           ",\"screenCaptureGranted\":" + truth(screenCaptureGranted) +
           ",\"accessibilityTrusted\":" + truth(accessibilityTrusted) +
           ",\"stripEnabled\":" + truth(stripEnabled) +
           ",\"mirrorOnExternal\":" + truth(mirrorOnExternal) +
           ",\"spacing\":" + number(spacing, "null") + ",\"padding\":" + number(padding, "null") +
           ",\"obstacle\":" + quoted(obstacle()) + ",\"items\":" + array(items) + "}\n";
}

std::string Diagnosis::text() const {
    std::string out = "Orrivane " + version + "\n";
    out +=
        "Running: " + (runningProcess ? "yes, process " + std::to_string(*runningProcess) : "no") +
        "\n";
    for (const auto& screen : screens)
        out +=
            "Screen: " + plain(screen.frame) + ", top inset " + number(screen.safeAreaTop) + "\n";
    if (screens.empty())
        out += "Screen: none\n";
    out += "Screen asleep: " + yes(displayAsleep) + "\n";
    out += notch ? "Notch: from " + number(notch->notchMinX) + " to " + number(notch->notchMaxX) +
                       ", bar " + number(notch->menuBarHeight) + " high\n"
                 : "Notch: none known\n";
    out += "Menus: " + (menuWidth ? number(*menuWidth) + " wide" : "width unknown") + "\n";
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
        out += "  " + std::to_string(item.window.id) + "  " + plain(item.window.frame) + "  " +
               (item.application.empty() ? "unknown" : item.application) + " (" +
               std::to_string(item.process) + ")  " + (item.window.isEaten ? "hidden" : "visible") +
               (item.window.isOnscreen ? "" : ", off screen") +
               (item.reason.empty() ? ", mirrored" : ", not mirrored: " + item.reason) + "\n";
    return out;
}

} // namespace orrivane

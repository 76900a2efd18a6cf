#include <Orrivane/Diagnosis.h>

#include <Orrivane/support/PlainText.h>

#include <cstddef>
#include <type_traits>

namespace orrivane {

namespace {

std::string json(bool value) {
    return value ? "true" : "false";
}
std::string json(double value) {
    return decimal(value);
}
std::string json(const std::string& value) {
    return jsonString(value);
}
template <typename Integer>
std::enable_if_t<std::is_integral_v<Integer> && !std::is_same_v<Integer, bool>, std::string>
json(Integer value) {
    return std::to_string(value);
}
std::string json(const Rect& rect) {
    return "[" + json(rect.origin.x) + "," + json(rect.origin.y) + "," + json(rect.size.width) +
           "," + json(rect.size.height) + "]";
}
// Declared before the two templates, whose values they are.
std::string json(const NotchInfo& notch);
std::string json(const RunningApplication& application);
std::string json(const Diagnosis::Item& item);
std::string json(const OwnedWindow& entry);
std::string json(const ExtrasBar& bar);
std::string json(const ExtrasBar::Child& child);
std::string json(const CaptureProbes& probes);
std::string json(const CaptureProbe& probe);
std::string json(const CaptureProbe::Picture& picture);

template <typename Value>
std::string json(const std::optional<Value>& value) {
    return value ? json(*value) : "null";
}

template <typename Value>
std::string json(const std::vector<Value>& values) {
    std::string result = "[";
    for (const auto& value : values)
        result += (result.size() > 1 ? "," : "") + json(value);
    return result + "]";
}

/// Writes an object's members in the order in which they are given.
class Object {
  public:
    template <typename Value>
    Object& with(std::string_view key, const Value& value) {
        return withRaw(key, json(value));
    }
    Object& withRaw(std::string_view key, const std::string& value) {
        text_ += (text_.empty() ? "" : ",") + jsonString(key) + ":" + value;
        return *this;
    }
    [[nodiscard]] std::string text() const { return "{" + text_ + "}"; }

  private:
    std::string text_;
};

std::string json(const NotchInfo& notch) {
    return Object()
        .with("screenMinX", notch.screenMinX)
        .with("screenWidth", notch.screenWidth)
        .with("menuBarHeight", notch.menuBarHeight)
        .with("notchMinX", notch.notchMinX)
        .with("notchMaxX", notch.notchMaxX)
        .text();
}

std::string json(const RunningApplication& application) {
    return Object()
        .with("name", application.localizedName)
        .with("bundleIdentifier", application.bundleIdentifier)
        .with("process", application.processIdentifier)
        .text();
}

std::string json(const Diagnosis::Item& item) {
    return Object()
        .with("id", item.window.id)
        .with("frame", item.window.frame)
        .with("application", item.application)
        .with("process", item.process)
        .with("isOnscreen", item.window.isOnscreen)
        .with("isEaten", item.window.isEaten)
        .with("isMirrored", item.reason.empty())
        .with("reason", item.reason)
        .text();
}

std::string json(const OwnedWindow& entry) {
    return Object()
        .with("number", entry.window.number)
        .with("layer", entry.window.layer)
        .with("bounds", entry.window.bounds)
        .with("onscreen", entry.window.onscreen)
        .with("process", entry.process)
        .with("owner", entry.owner)
        .text();
}

std::string json(const ExtrasBar::Child& child) {
    return Object().with("role", child.role).with("frame", child.frame).text();
}

std::string json(const ExtrasBar& bar) {
    return Object()
        .with("application", bar.application)
        .with("process", bar.process)
        .with("answered", bar.answered)
        .with("isThere", bar.isThere)
        .with("milliseconds", bar.milliseconds)
        .with("childCount", bar.childCount)
        .with("children", bar.children)
        .text();
}

std::string json(const CaptureProbe::Picture& picture) {
    return Object()
        .with("width", picture.width)
        .with("height", picture.height)
        .with("isClear", picture.isClear)
        .text();
}

std::string json(const CaptureProbe& probe) {
    return Object()
        .with("id", probe.window)
        .with("isInSnapshot", probe.isInSnapshot)
        .with("picture", probe.picture)
        .text();
}

std::string json(const CaptureProbes& probes) {
    return Object()
        .with("snapshotSize", probes.snapshotSize)
        .with("windows", probes.windows)
        .text();
}

std::string screensOf(const Diagnosis& diagnosis) {
    std::string result;
    for (std::size_t i = 0; i < diagnosis.screens.size(); ++i) {
        const auto& screen = diagnosis.screens[i];
        Object object;
        object.with("frame", screen.frame)
            .with("safeAreaTop", screen.safeAreaTop)
            .with("auxiliaryTopLeftArea", screen.auxiliaryTopLeftArea)
            .with("auxiliaryTopRightArea", screen.auxiliaryTopRightArea);
        if (i < diagnosis.screenPlaces.size())
            object.with("visibleFrame", diagnosis.screenPlaces[i].visibleFrame)
                .with("isMain", diagnosis.screenPlaces[i].isMain);
        result += (i > 0 ? "," : "") + object.text();
    }
    return "[" + result + "]";
}

} // namespace

std::string Diagnosis::json() const {
    const auto ownWindowsObject = Object()
                                      .with("numbers", ownWindows)
                                      .with("isRunningElsewhere", runningProcess.has_value())
                                      .text();
    return Object()
               .with("version", version)
               .withRaw("bundle",
                        Object().with("version", bundle.version).with("build", bundle.build).text())
               .with("runningProcess", runningProcess)
               .withRaw("screens", screensOf(*this))
               .with("displayAsleep", displayAsleep)
               .with("notch", notch)
               .with("menuWidth", menuWidth)
               .with("menuBarOwner", menuBarOwner)
               .with("frontmost", frontmost)
               .with("screenCaptureGranted", screenCaptureGranted)
               .with("accessibilityTrusted", accessibilityTrusted)
               .with("stripEnabled", stripEnabled)
               .with("mirrorOnExternal", mirrorOnExternal)
               .with("spacing", spacing)
               .with("padding", padding)
               .with("obstacle", obstacle())
               .with("items", items)
               .with("windows", windows)
               .withRaw("ownWindows", ownWindowsObject)
               .with("extrasBars", extrasBars)
               .with("captures", captures)
               .text() +
           "\n";
}

} // namespace orrivane

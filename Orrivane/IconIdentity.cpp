#include <Orrivane/IconIdentity.h>

#include <Orrivane/AccessibilityReading.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/platform/SystemLog.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace orrivane {

namespace {

// Points.
constexpr double barHeightLimit = 40.0; // from the top of a screen
constexpr double edgeSlack = 1.0;
constexpr double matchLimit = 20.0; // between an item and its owner, as measured from the bar's end

std::vector<AccessibilityElement> copyChildren(Accessibility& accessibility,
                                               const AccessibilityElement& element) {
    std::vector<AccessibilityElement> children;
    const auto members =
        readAttribute<AccessibilityElementList>(accessibility, element, "AXChildren");
    if (!members)
        return children;
    for (const auto& member : *members)
        if (member)
            children.push_back(*member);
    return children;
}

std::optional<Rect> frameOf(Accessibility& accessibility, const AccessibilityElement& element) {
    if (const auto frame = readAttribute<Rect>(accessibility, element, "AXFrame"))
        return frame;
    const auto position = readAttribute<Point>(accessibility, element, "AXPosition");
    const auto size = readAttribute<Size>(accessibility, element, "AXSize");
    if (!position || !size)
        return std::nullopt;
    return Rect{*position, *size};
}

AccessibilityElement applicationElement(Accessibility& accessibility, std::int32_t pid) {
    auto element = accessibility.applicationElement(pid);
    accessibility.setMessagingTimeout(element, accessibilityTimeout);
    return element;
}

std::string nameOf(const RunningApplication& application) {
    if (application.localizedName)
        return *application.localizedName;
    return application.bundleIdentifier.value_or("App");
}

void appendOwners(Accessibility& accessibility, const RunningApplication& application,
                  std::vector<IconOwner>& owners) {
    const auto element = applicationElement(accessibility, application.processIdentifier);
    const auto extras =
        readAttribute<AccessibilityElement>(accessibility, element, "AXExtrasMenuBar");
    if (!extras)
        return;
    const auto name = nameOf(application);
    for (const auto& child : copyChildren(accessibility, *extras))
        if (const auto frame = frameOf(accessibility, child))
            owners.push_back({child, name, application.processIdentifier, *frame});
}

bool perform(std::string_view action, const IconOwner& owner, Accessibility& accessibility,
             SystemLog& log) {
    const int error = accessibility.performAction(owner.element, action);
    if (error == 0)
        return true;
    log.write("Orrivane: " + std::string(action) + " failed for " + owner.appName + " (pid " +
              std::to_string(owner.pid) + "): AXError " + std::to_string(error));
    return false;
}

double distanceFromBarEnd(const Rect& frame, std::span<const ScreenDescription> screens) {
    return IconIdentity::barRightEdge(frame, screens) - frame.midX();
}

} // namespace

std::vector<IconOwner> IconIdentity::resolveOwners() {
    return resolveOwners(Platform::installed().accessibility);
}

bool IconIdentity::press(const IconOwner& owner) {
    const auto& platform = Platform::installed();
    return press(owner, platform.accessibility, platform.log);
}

bool IconIdentity::hasOpenMenu(const IconOwner& owner) {
    return hasOpenMenu(owner, Platform::installed().accessibility);
}

std::optional<double> IconIdentity::frontmostMenuWidth() {
    return frontmostMenuWidth(Platform::installed().accessibility);
}

std::vector<IconOwner> IconIdentity::resolveOwners(Accessibility& accessibility) {
    std::vector<IconOwner> owners;
    for (const auto& application : accessibility.runningApplications())
        if (application.processIdentifier >= 1)
            appendOwners(accessibility, application, owners);
    return owners;
}

bool IconIdentity::press(const IconOwner& owner, Accessibility& accessibility, SystemLog& log) {
    return perform("AXPress", owner, accessibility, log);
}

bool IconIdentity::showMenu(const IconOwner& owner, Accessibility& accessibility, SystemLog& log) {
    return perform("AXShowMenu", owner, accessibility, log);
}

bool IconIdentity::hasOpenMenu(const IconOwner& owner, Accessibility& accessibility) {
    return std::ranges::any_of(copyChildren(accessibility, owner.element), [&](const auto& child) {
        return readAttribute<std::string>(accessibility, child, "AXRole") == "AXMenu";
    });
}

std::optional<double> IconIdentity::frontmostMenuWidth(Accessibility& accessibility) {
    auto application = accessibility.menuBarOwningApplication();
    if (!application)
        application = accessibility.frontmostApplication();
    if (!application)
        return std::nullopt;
    const auto element = applicationElement(accessibility, application->processIdentifier);
    const auto bar = readAttribute<AccessibilityElement>(accessibility, element, "AXMenuBar");
    if (!bar)
        return std::nullopt;
    const auto barFrame = frameOf(accessibility, *bar);
    std::vector<std::optional<Rect>> frames;
    for (const auto& child : copyChildren(accessibility, *bar))
        frames.push_back(frameOf(accessibility, child));
    return menuWidth(barFrame, frames);
}

double IconIdentity::barRightEdge(const Rect& rect, std::span<const ScreenDescription> screens) {
    if (screens.empty())
        return rect.maxX();
    const Rect& primary = screens.front().frame;
    for (const auto& [frame, inset, left, right] : screens) {
        const double top = primary.maxY() - frame.maxY();
        if (std::abs(rect.minY() - top) < barHeightLimit &&
            rect.minX() >= frame.minX() - edgeSlack && rect.maxX() <= frame.maxX() + edgeSlack)
            return frame.maxX();
    }
    return primary.maxX();
}

std::optional<IconOwner> IconIdentity::owner(const StatusItemWindow& window,
                                             std::span<const IconOwner> owners,
                                             std::span<const ScreenDescription> screens) {
    const double target = distanceFromBarEnd(window.frame, screens);
    const IconOwner* best = nullptr;
    double bestDistance = std::numeric_limits<double>::max();
    for (const auto& candidate : owners) {
        const double distance = std::abs(distanceFromBarEnd(candidate.frame, screens) - target);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = &candidate;
        }
    }
    if (!best || bestDistance > matchLimit)
        return std::nullopt;
    return *best;
}

std::optional<double> IconIdentity::menuWidth(const std::optional<Rect>& bar,
                                              std::span<const std::optional<Rect>> children) {
    std::optional<double> maxRight;
    std::optional<double> minLeft;
    for (const auto& child : children) {
        if (!child)
            continue;
        maxRight = std::max(maxRight.value_or(child->maxX()), child->maxX());
        minLeft = std::min(minLeft.value_or(child->minX()), child->minX());
    }
    if (!maxRight)
        return std::nullopt;
    return *maxRight - (bar ? bar->minX() : *minLeft);
}

} // namespace orrivane

#include <Orrivane/ExtrasBar.h>

#include <Orrivane/AccessibilityReading.h>
#include <Orrivane/platform/MainLoop.h>

#include <algorithm>

namespace orrivane {

namespace {

// As the tray reads it, but that a child which answers nothing costs one question less.
std::optional<Rect> frameOf(Accessibility& accessibility, const AccessibilityElement& element) {
    if (const auto frame = readAttribute<Rect>(accessibility, element, "AXFrame"))
        return frame;
    const auto position = readAttribute<Point>(accessibility, element, "AXPosition");
    if (!position)
        return std::nullopt;
    const auto size = readAttribute<Size>(accessibility, element, "AXSize");
    return size ? std::optional(Rect{*position, *size}) : std::nullopt;
}

ExtrasBar::Child childFrom(Accessibility& accessibility, const AccessibilityElement& element) {
    return {readAttribute<std::string>(accessibility, element, "AXRole").value_or(""),
            frameOf(accessibility, element)};
}

void readChildren(Accessibility& accessibility, const MainLoop& clock, double begin,
                  const AccessibilityElement& element, ExtrasBar& bar) {
    const auto members =
        readAttribute<AccessibilityElementList>(accessibility, element, "AXChildren");
    if (!members)
        return;
    bar.childCount = members->size();
    for (const auto& member : *members) {
        if (clock.now() - begin >= ExtrasBar::patience)
            return;
        bar.children.push_back(member ? childFrom(accessibility, *member) : ExtrasBar::Child{});
    }
}

ExtrasBar read(Accessibility& accessibility, const MainLoop& clock,
               const RunningApplication& application) {
    ExtrasBar bar;
    bar.application = application.localizedName.value_or(application.bundleIdentifier.value_or(""));
    bar.process = application.processIdentifier;
    if (bar.process < 1)
        return bar;
    const double begin = clock.now();
    const auto element = accessibility.applicationElement(bar.process);
    accessibility.setMessagingTimeout(element, accessibilityTimeout);
    const auto extras =
        readAttribute<AccessibilityElement>(accessibility, element, "AXExtrasMenuBar");
    bar.isThere = extras.has_value();
    // Every application that answers at all has a role.
    bar.answered = bar.isThere || accessibility.copyAttributeValue(element, "AXRole");
    if (extras)
        readChildren(accessibility, clock, begin, *extras, bar);
    bar.milliseconds = std::max(clock.now() - begin, 0.0) * 1000;
    return bar;
}

} // namespace

std::vector<ExtrasBar> ExtrasBar::readAll(Accessibility& accessibility, const MainLoop& clock) {
    std::vector<ExtrasBar> bars;
    for (const auto& application : accessibility.runningApplications()) {
        if (bars.size() == mostApplications)
            break;
        bars.push_back(read(accessibility, clock, application));
    }
    return bars;
}

} // namespace orrivane

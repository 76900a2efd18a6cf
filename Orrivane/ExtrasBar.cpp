#include <Orrivane/ExtrasBar.h>

#include <Orrivane/platform/Accessibility.h>
#include <Orrivane/platform/MainLoop.h>

#include <algorithm>

namespace orrivane {

namespace {

constexpr float messagingTimeout = 0.3F;

template <typename T>
std::optional<T> attribute(Accessibility& accessibility, const AccessibilityElement& element,
                           std::string_view name) {
    auto value = accessibility.copyAttributeValue(element, name);
    auto* typed = value ? std::get_if<T>(&*value) : nullptr;
    return typed ? std::optional<T>(std::move(*typed)) : std::nullopt;
}

ExtrasBar::Child childFrom(Accessibility& accessibility, const AccessibilityElement& element) {
    return {attribute<std::string>(accessibility, element, "AXRole").value_or(""),
            attribute<Rect>(accessibility, element, "AXFrame")};
}

void readChildren(Accessibility& accessibility, const MainLoop& clock, double begin,
                  const AccessibilityElement& element, ExtrasBar& bar) {
    const auto members = attribute<AccessibilityElementList>(accessibility, element, "AXChildren");
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
    accessibility.setMessagingTimeout(element, messagingTimeout);
    const auto extras = attribute<AccessibilityElement>(accessibility, element, "AXExtrasMenuBar");
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

#pragma once

#include <macos/system/AXAccessibility.h>
#include <tests/macos/MacSystemTest.h>
#include <tests/macos/fakes/AccessibilityServer.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orrivane {

/// The body on the faked processes, one of which, 12, is there from the start.
struct AXFixture : MacSystemTest {
    std::vector<RunningApplication> running;
    std::optional<RunningApplication> menuBarOwning;
    std::optional<RunningApplication> frontmost;
    fakes::AccessibilityServer& server = fakes::AccessibilityServer::shared();
    fakes::NodePointer application = server.launch(12);
    AXAccessibility accessibility{applications()};

    static constexpr std::string_view attribute = "AXAnything";

    AXAccessibility::Applications applications() {
        return {[this] { return running; }, [this] { return menuBarOwning; },
                [this] { return frontmost; }};
    }
    AccessibilityElement element() { return accessibility.applicationElement(12); }
    /// What `attribute` of the application is from now on.
    void answer(fakes::Answer given) {
        application->attributes[std::string(attribute)] = std::move(given);
    }
    std::optional<AttributeValue> value() {
        return accessibility.copyAttributeValue(element(), attribute);
    }
    std::optional<AttributeValue> valueOf(fakes::Any object) {
        answer(fakes::gives(std::move(object)));
        return value();
    }
    template <typename T>
    std::optional<T> read(const AccessibilityElement& from, std::string_view name) {
        const auto found = accessibility.copyAttributeValue(from, name);
        if (!found || !std::holds_alternative<T>(*found))
            return std::nullopt;
        return std::get<T>(*found);
    }
};

} // namespace orrivane

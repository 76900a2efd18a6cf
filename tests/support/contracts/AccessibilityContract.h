#pragma once

#include <Orrivane/platform/Accessibility.h>
#include <tests/support/contracts/Contract.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace orrivane {

/// The world also offers: `Accessibility& accessibility()`, `std::int32_t launch(name)` (a process
/// with one status item that can be pressed), `void quit(pid)`, `bool hang(pid)` (it answers
/// nothing from now on), `int presses(pid)` (how many of them the process has seen),
/// `Rect itemFrame(pid)`, `bool makeFrontmost(pid)`, `bool setTrusted(bool)` and `double elapsed()`
/// (steady seconds).
template <typename World>
class AccessibilityContract : public Contract<World> {
  protected:
    Accessibility& accessibility() { return this->world.accessibility(); }

    template <typename T>
    std::optional<T> read(const AccessibilityElement& element, std::string_view attribute) {
        const auto value = accessibility().copyAttributeValue(element, attribute);
        if (!value || !std::holds_alternative<T>(*value))
            return std::nullopt;
        return std::get<T>(*value);
    }
    /// The process's only status item; absent while it is not there.
    std::optional<AccessibilityElement> item(std::int32_t pid) {
        const auto application = accessibility().applicationElement(pid);
        const auto bar = read<AccessibilityElement>(application, "AXExtrasMenuBar");
        if (!bar)
            return std::nullopt;
        const auto children = read<AccessibilityElementList>(*bar, "AXChildren");
        return children && children->size() == 1 ? children->front() : std::nullopt;
    }
    /// Launches a process and waits for its item.
    std::pair<std::int32_t, std::optional<AccessibilityElement>> launch(const std::string& name) {
        const std::int32_t pid = this->world.launch(name);
        this->world.pumpUntil([&] { return item(pid).has_value(); });
        return {pid, item(pid)};
    }

    static constexpr std::int32_t nobody = 0x3ffffff0;
};

TYPED_TEST_SUITE_P(AccessibilityContract);

TYPED_TEST_P(AccessibilityContract, aLaunchedApplicationIsListedOnceUnderItsName) {
    const auto [pid, item] = this->launch("contract");
    ASSERT_TRUE(item);
    const auto running = this->accessibility().runningApplications();
    EXPECT_EQ(std::ranges::count(running, pid, &RunningApplication::processIdentifier), 1);
    const auto found = std::ranges::find(running, pid, &RunningApplication::processIdentifier);
    ASSERT_NE(found, running.end());
    EXPECT_TRUE(found->localizedName || found->bundleIdentifier);
}

TYPED_TEST_P(AccessibilityContract, aStatusItemHasTheFrameItHasOnScreen) {
    const auto [pid, item] = this->launch("contract");
    ASSERT_TRUE(item);
    std::optional<Rect> frame = this->template read<Rect>(*item, "AXFrame");
    if (!frame) {
        const auto position = this->template read<Point>(*item, "AXPosition");
        const auto size = this->template read<Size>(*item, "AXSize");
        ASSERT_TRUE(position && size);
        frame = Rect{*position, *size};
    }
    EXPECT_EQ(*frame, this->world.itemFrame(pid));
}

TYPED_TEST_P(AccessibilityContract, aCopyOfAHandleMeansTheSameElement) {
    const auto [pid, item] = this->launch("contract");
    ASSERT_TRUE(item);
    const auto copy = *item;
    EXPECT_EQ(copy, *item);
    EXPECT_EQ(this->template read<Rect>(copy, "AXFrame"),
              this->template read<Rect>(*item, "AXFrame"));
}

TYPED_TEST_P(AccessibilityContract, aPressIsAcceptedAndReachesTheProcess) {
    const auto [pid, item] = this->launch("contract");
    ASSERT_TRUE(item);
    const int before = this->world.presses(pid);
    EXPECT_EQ(this->accessibility().performAction(*item, "AXPress"), 0);
    EXPECT_TRUE(this->world.pumpUntil([&] { return this->world.presses(pid) == before + 1; }));
}

TYPED_TEST_P(AccessibilityContract, theSecondaryActionIsAcceptedWhereThePlatformHasOne) {
    const auto [pid, item] = this->launch("contract");
    ASSERT_TRUE(item);
    const bool accepted = this->accessibility().performAction(*item, "AXShowMenu") == 0;
    EXPECT_EQ(accepted, this->accessibility().statusItemsHaveSecondaryAction());
}

TYPED_TEST_P(AccessibilityContract, whatNobodyKnowsIsAbsentOrAnError) {
    const auto [pid, item] = this->launch("contract");
    ASSERT_TRUE(item);
    EXPECT_FALSE(this->accessibility().copyAttributeValue(*item, "AXNoSuchAttribute"));
    EXPECT_NE(this->accessibility().performAction(*item, "AXNoSuchAction"), 0);
    EXPECT_EQ(this->world.presses(pid), 0);
}

TYPED_TEST_P(AccessibilityContract, anElementOfNoProcessOnlyFailsItsReads) {
    const auto element = this->accessibility().applicationElement(this->nobody);
    this->accessibility().setMessagingTimeout(element, 0.3F);
    EXPECT_FALSE(this->accessibility().copyAttributeValue(element, "AXExtrasMenuBar"));
    EXPECT_FALSE(this->accessibility().copyAttributeValue(element, "AXMenuBar"));
    EXPECT_NE(this->accessibility().performAction(element, "AXPress"), 0);
}

TYPED_TEST_P(AccessibilityContract, anElementOutlivesItsProcessAndFails) {
    const auto [pid, item] = this->launch("contract");
    ASSERT_TRUE(item);
    this->world.quit(pid);
    EXPECT_TRUE(this->world.pumpUntil(
        [&] { return !this->accessibility().copyAttributeValue(*item, "AXFrame"); }));
    EXPECT_NE(this->accessibility().performAction(*item, "AXPress"), 0);
    EXPECT_TRUE(this->world.pumpUntil([&] {
        return std::ranges::count(this->accessibility().runningApplications(), pid,
                                  &RunningApplication::processIdentifier) == 0;
    }));
}

TYPED_TEST_P(AccessibilityContract, aProcessThatHangsCostsNoMoreThanItsTimeout) {
    const auto [pid, item] = this->launch("contract");
    ASSERT_TRUE(item);
    if (!this->world.hang(pid))
        GTEST_SKIP() << "no process can be made to hang here";
    const auto application = this->accessibility().applicationElement(pid);
    this->accessibility().setMessagingTimeout(application, 0.3F);
    const double begin = this->world.elapsed();
    (void)this->accessibility().copyAttributeValue(application, "AXExtrasMenuBar");
    (void)this->accessibility().performAction(*item, "AXPress");
    EXPECT_LE(this->world.elapsed() - begin, 2 * 0.3 + 0.2);
}

TYPED_TEST_P(AccessibilityContract, theFrontmostApplicationIsTheOneThatWasActivated) {
    const auto [pid, item] = this->launch("contract");
    ASSERT_TRUE(item);
    if (!this->world.makeFrontmost(pid))
        GTEST_SKIP() << "no application can be activated here";
    EXPECT_TRUE(this->world.pumpUntil([&, process = pid] {
        const auto frontmost = this->accessibility().frontmostApplication();
        return frontmost && frontmost->processIdentifier == process;
    }));
}

TYPED_TEST_P(AccessibilityContract, withoutPermissionEveryReadIsAbsentAndEveryPressFails) {
    const auto [pid, item] = this->launch("contract");
    ASSERT_TRUE(item);
    EXPECT_TRUE(this->accessibility().isTrusted());
    if (!this->world.setTrusted(false))
        GTEST_SKIP() << "the permission cannot be taken away here";
    EXPECT_FALSE(this->accessibility().isTrusted());
    EXPECT_FALSE(this->accessibility().copyAttributeValue(*item, "AXFrame"));
    EXPECT_NE(this->accessibility().performAction(*item, "AXPress"), 0);
    EXPECT_EQ(this->world.presses(pid), 0);
}

REGISTER_TYPED_TEST_SUITE_P(AccessibilityContract, aLaunchedApplicationIsListedOnceUnderItsName,
                            aStatusItemHasTheFrameItHasOnScreen, aCopyOfAHandleMeansTheSameElement,
                            aPressIsAcceptedAndReachesTheProcess,
                            theSecondaryActionIsAcceptedWhereThePlatformHasOne,
                            whatNobodyKnowsIsAbsentOrAnError, anElementOfNoProcessOnlyFailsItsReads,
                            anElementOutlivesItsProcessAndFails,
                            aProcessThatHangsCostsNoMoreThanItsTimeout,
                            theFrontmostApplicationIsTheOneThatWasActivated,
                            withoutPermissionEveryReadIsAbsentAndEveryPressFails);

} // namespace orrivane

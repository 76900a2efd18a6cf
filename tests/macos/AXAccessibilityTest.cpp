#include "AXFixture.h"

#include <Orrivane/IconIdentity.h>
#include <tests/support/ScriptedLog.h>

#include <limits>

namespace orrivane {
namespace {

using AXAccessibilityTest = AXFixture;

TEST_F(AXAccessibilityTest, theWorkspaceIsAskedForTheApplications) {
    running = {{12, "Clock", "org.example.clock"}, {-1, std::nullopt, std::nullopt}};
    menuBarOwning = running[0];
    EXPECT_EQ(accessibility.runningApplications(), running);
    EXPECT_EQ(accessibility.menuBarOwningApplication(), running[0]);
    EXPECT_EQ(accessibility.frontmostApplication(), std::nullopt);
    frontmost = running[1];
    EXPECT_EQ(accessibility.frontmostApplication(), running[1]);
}

TEST_F(AXAccessibilityTest, statusItemsHaveNoSecondaryAction) {
    EXPECT_FALSE(accessibility.statusItemsHaveSecondaryAction());
}

TEST_F(AXAccessibilityTest, trustIsWhatTheSystemSays) {
    EXPECT_TRUE(accessibility.isTrusted());
    server.isTrusted = false;
    EXPECT_FALSE(accessibility.isTrusted());
}

TEST_F(AXAccessibilityTest, theProcessWideTimeoutIsShortFromTheBeginning) {
    EXPECT_EQ(server.processWideTimeout, 0.3F);
}

TEST_F(AXAccessibilityTest, aProcessWideTimeoutThatWasRefusedIsSetWithTheNextApplication) {
    for (const bool makesElements : {false, true}) {
        server.processWideTimeout = fakes::AccessibilityServer::systemTimeout;
        server.makesElements = makesElements;
        server.timeoutAnswer = kAXErrorAPIDisabled;
        AXAccessibility late{applications()};
        EXPECT_EQ(server.processWideTimeout, fakes::AccessibilityServer::systemTimeout);
        server.makesElements = true;
        server.timeoutAnswer = kAXErrorSuccess;
        (void)late.applicationElement(12);
        EXPECT_EQ(server.processWideTimeout, 0.3F);
    }
}

TEST_F(AXAccessibilityTest, aHungProcessCostsEachCallTheTimeoutOfItsHandle) {
    const auto node = server.launch(12);
    node->attributes["AXTitle"] = fakes::gives(fakes::text("Clock"));
    server.processes[12].hangs = true;
    const auto element = accessibility.applicationElement(12);
    accessibility.setMessagingTimeout(element, 0.2F);
    EXPECT_EQ(accessibility.copyAttributeValue(element, "AXTitle"), std::nullopt);
    EXPECT_NEAR(server.now, 0.2, 1e-6);
    EXPECT_EQ(accessibility.performAction(element, "AXPress"), kAXErrorCannotComplete);
    EXPECT_NEAR(server.now, 0.4, 1e-6);
}

TEST_F(AXAccessibilityTest, childrenAndSecondHandlesAreBoundedToo) {
    const auto bar = server.makeNode(12);
    server.launch(12)->attributes["AXExtrasMenuBar"] = fakes::givesElement(bar);
    const auto element = accessibility.applicationElement(12);
    accessibility.setMessagingTimeout(element, 0.2F);
    const auto child = read<AccessibilityElement>(element, "AXExtrasMenuBar");
    ASSERT_TRUE(child);
    server.processes[12].hangs = true;
    EXPECT_EQ(accessibility.copyAttributeValue(*child, "AXChildren"), std::nullopt);
    EXPECT_NEAR(server.now, 0.3, 1e-6);
    const auto second = accessibility.applicationElement(12);
    EXPECT_EQ(accessibility.copyAttributeValue(second, "AXMenuBar"), std::nullopt);
    EXPECT_NEAR(server.now, 0.6, 1e-6);
}

TEST_F(AXAccessibilityTest, everyErrorCodeMakesAReadAbsent) {
    for (const auto error : {kAXErrorFailure, kAXErrorIllegalArgument, kAXErrorInvalidUIElement,
                             kAXErrorCannotComplete, kAXErrorAttributeUnsupported,
                             kAXErrorAPIDisabled, kAXErrorNoValue}) {
        answer(fakes::fails(error));
        EXPECT_EQ(value(), std::nullopt) << error;
    }
}

TEST_F(AXAccessibilityTest, successWithoutAValueIsAbsent) {
    answer(fakes::givesNull());
    EXPECT_EQ(value(), std::nullopt);
}

TEST_F(AXAccessibilityTest, whatAFailedReadWroteIsNotTakenOver) {
    const auto stranger = fakes::text("left over");
    answer(fakes::failsWriting(kAXErrorNoValue, stranger.get()));
    EXPECT_EQ(value(), std::nullopt);
    EXPECT_EQ(fakes::Heap::shared().references(stranger.get()), 1);
}

TEST_F(AXAccessibilityTest, withoutMemoryForAHandleEveryCallOnItFails) {
    server.launch(12)->attributes["AXTitle"] = fakes::gives(fakes::text("Clock"));
    server.makesElements = false;
    const auto element = accessibility.applicationElement(12);
    accessibility.setMessagingTimeout(element, 0.3F);
    EXPECT_EQ(accessibility.copyAttributeValue(element, "AXTitle"), std::nullopt);
    EXPECT_NE(accessibility.performAction(element, "AXPress"), 0);
}

TEST_F(AXAccessibilityTest, aNameThatNoStringCanBeMadeOfFails) {
    answer(fakes::gives(fakes::text("Clock")));
    EXPECT_EQ(accessibility.copyAttributeValue(element(), "\xff"), std::nullopt);
    EXPECT_NE(accessibility.performAction(element(), "\xff"), 0);
    const auto before = element();
    fakes::Heap::shared().refuse<fakes::Text>(true);
    EXPECT_EQ(accessibility.copyAttributeValue(before, attribute), std::nullopt);
    EXPECT_NE(accessibility.performAction(before, "AXPress"), 0);
}

TEST_F(AXAccessibilityTest, anActionsCodeIsHandedOnUntouched) {
    auto& press = application->actions["AXPress"];
    for (const auto error :
         {kAXErrorSuccess, kAXErrorCannotComplete, kAXErrorInvalidUIElement, kAXErrorAPIDisabled}) {
        press = [error] { return error; };
        EXPECT_EQ(accessibility.performAction(element(), "AXPress"), static_cast<int>(error));
    }
}

// A process that tracks its menu inside the action does not answer, and has opened it all the same.
TEST_F(AXAccessibilityTest, aPressThatCannotCompleteIsNotRepeated) {
    int presses = 0;
    application->actions["AXPress"] = [&] {
        ++presses;
        return kAXErrorCannotComplete;
    };
    EXPECT_EQ(accessibility.performAction(element(), "AXPress"), kAXErrorCannotComplete);
    EXPECT_EQ(presses, 1);
}

TEST_F(AXAccessibilityTest, anElementOutlivesWhatItWasReadFrom) {
    const auto bar = server.makeNode(12);
    bar->attributes["AXRole"] = fakes::gives(fakes::text("AXMenuBar"));
    application->attributes["AXExtrasMenuBar"] = fakes::givesElement(bar);
    const auto child = read<AccessibilityElement>(element(), "AXExtrasMenuBar");
    ASSERT_TRUE(child);
    application->attributes.clear();
    EXPECT_EQ(read<std::string>(*child, "AXRole"), "AXMenuBar");
}

TEST_F(AXAccessibilityTest, ownersAreFoundAmongHungAndOddApplications) {
    const auto item = server.makeNode(12);
    item->attributes["AXFrame"] = fakes::fails(kAXErrorAttributeUnsupported);
    item->attributes["AXPosition"] = fakes::gives(fakes::point(1300, 0));
    item->attributes["AXSize"] = fakes::gives(fakes::size(30, 24));
    const auto odd = server.makeNode(12);
    const auto nan = std::numeric_limits<double>::quiet_NaN();
    odd->attributes["AXFrame"] = fakes::gives(fakes::rect(nan, 0, 30, 24));
    const auto bar = server.makeNode(12);
    bar->attributes["AXChildren"] =
        fakes::gives(fakes::list({fakes::text("no element"), fakes::elementHandle(odd),
                                  fakes::Any(), fakes::elementHandle(item)}));
    application->attributes["AXExtrasMenuBar"] = fakes::givesElement(bar);
    server.launch(13)->attributes["AXExtrasMenuBar"] = fakes::gives(fakes::text("no element"));
    server.launch(14);
    server.processes[14].hangs = true;
    running = {{-1, "Nobody", std::nullopt},
               {14, "Hung", std::nullopt},
               {13, "Odd", std::nullopt},
               {12, "Clock", std::nullopt}};

    const auto owners = IconIdentity::resolveOwners(accessibility);
    ASSERT_EQ(owners.size(), 1U);
    EXPECT_EQ(owners.front().appName, "Clock");
    EXPECT_EQ(owners.front().frame, (Rect{{1300, 0}, {30, 24}}));
    EXPECT_NEAR(server.now, 0.3, 1e-6);

    item->actions["AXPress"] = [] { return kAXErrorCannotComplete; };
    ScriptedLog log;
    EXPECT_FALSE(IconIdentity::press(owners.front(), accessibility, log));
    EXPECT_EQ(log.lines, (std::vector<std::string>{
                             "Orrivane: AXPress failed for Clock (pid 12): AXError -25204"}));
}

} // namespace
} // namespace orrivane

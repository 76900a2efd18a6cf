#include <tests/macos/fakes/Session.h>

#include <tests/macos/fakes/AccessibilityServer.h>
#include <tests/macos/fakes/EventSystem.h>
#include <tests/macos/fakes/PreferenceStore.h>
#include <tests/macos/fakes/WindowServer.h>

#include <gtest/gtest.h>

namespace orrivane::fakes {

void Session::forgetEverything() {
    WindowServer::shared() = {};
    AccessibilityServer::shared() = {};
    EventSystem::shared() = {};
    PreferenceStore::shared() = {};
}

Session::Session() {
    forgetEverything();
    Heap::shared().clear();
}

Session::~Session() {
    forgetEverything();
    EXPECT_EQ(Heap::shared().live(), 0) << "objects were never released";
    for (const auto& mistake : Heap::shared().mistakes())
        ADD_FAILURE() << mistake;
    Heap::shared().clear();
}

} // namespace orrivane::fakes

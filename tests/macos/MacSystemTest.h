#pragma once

#include <tests/macos/fakes/Session.h>

#include <gtest/gtest.h>

namespace orrivane {

/// The base of tests on the faked system. It is the first to come and the last to go, so what a
/// test's own fields hold is released before the objects are counted.
class MacSystemTest : public ::testing::Test {
    fakes::Session session_;
};

} // namespace orrivane

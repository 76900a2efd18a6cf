#pragma once

#include "Observer.h"

#include <gtest/gtest.h>

namespace orrivane::e2e {

/// Drags what a toolkit lets drag from one place of the screen to another, step by step as a hand
/// would: each step is taken when the picture that the program carries has come to the pointer,
/// since a toolkit that lags skips the places between. Lets go at the end, also when nothing was
/// carried; that is the failure.
testing::AssertionResult dragByHand(Observer& observer, pid_t program, const PixelPoint& from,
                                    const PixelPoint& to);

} // namespace orrivane::e2e

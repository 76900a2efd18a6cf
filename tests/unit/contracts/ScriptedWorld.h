#pragma once

#include <tests/support/CallJournal.h>
#include <tests/support/VirtualLoop.h>

namespace orrivane {

/// What the surroundings of every scripted body share: virtual time.
struct ScriptedWorld {
    VirtualLoop virtualLoop;
    CallJournal journal;

    template <typename Predicate>
    bool pumpUntil(Predicate holds) {
        constexpr int steps = 1000;
        for (int i = 0; i < steps && !holds(); ++i)
            virtualLoop.advance(0.01);
        return holds();
    }
    [[nodiscard]] double elapsed() const { return virtualLoop.elapsed(); }
};

} // namespace orrivane

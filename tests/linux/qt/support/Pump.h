#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <chrono>

namespace orrivane {

/// Runs the event loop until `condition` holds; false when it does not within a bound that no
/// machine needs.
template <typename Condition>
bool pumpUntil(Condition condition) {
    using std::chrono_literals::operator""ms;
    using std::chrono_literals::operator""s;
    const QDeadlineTimer deadline(10s);
    // Conditions may also change without an event of this process.
    QTimer look;
    look.start(5ms);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

/// Runs what is queued already, and what that queues in turn.
inline void pumpQueued() {
    for (int turn = 0; turn < 3; ++turn)
        QCoreApplication::processEvents();
}

} // namespace orrivane

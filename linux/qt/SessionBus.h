#pragma once

#include <QFile>
#include <QString>

namespace orrivane {

/// Whether the user has a session bus. Who connects without one makes the bus library start one of
/// the program's own.
inline bool hasSessionBus() {
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

} // namespace orrivane

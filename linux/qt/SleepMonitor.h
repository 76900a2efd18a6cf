#pragma once

#include <QDBusConnection>
#include <QObject>

#include <functional>

namespace orrivane {

/// Tells when the machine goes to sleep and when it has woken up, as the login manager announces
/// it. Without a bus or a login manager it stays silent; a login manager that starts later counts.
class SleepMonitor : public QObject {
    Q_OBJECT

  public:
    /// `bus` is the system bus, connected or not. `changed` runs on this thread, never in here.
    SleepMonitor(QDBusConnection bus, std::function<void(bool goingToSleep)> changed);

  private slots:
    void prepareForSleep(bool goingToSleep);

  private:
    std::function<void(bool)> changed_;
};

} // namespace orrivane

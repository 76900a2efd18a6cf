#include <linux/qt/SleepMonitor.h>

#include <utility>

namespace orrivane {

SleepMonitor::SleepMonitor(QDBusConnection bus, std::function<void(bool)> changed)
    : changed_(std::move(changed)) {
    if (!bus.isConnected())
        return;
    bus.connect(QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
                QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"),
                this, SLOT(prepareForSleep(bool)));
}

void SleepMonitor::prepareForSleep(bool goingToSleep) {
    if (changed_)
        changed_(goingToSleep);
}

} // namespace orrivane

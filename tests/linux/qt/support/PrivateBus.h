#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <vector>

namespace orrivane {

/// A D-Bus daemon of the test's own that starts no services.
class PrivateBus {
  public:
    PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus();

    /// Empty: there is no daemon on this machine.
    [[nodiscard]] QString address() const { return address_; }
    [[nodiscard]] qint64 process() const { return daemon_.processId(); }
    /// A connection of its own each time; closed with this object.
    QDBusConnection connect();

  private:
    QTemporaryDir folder_;
    QProcess daemon_;
    QString address_;
    std::vector<QString> names_;
};

} // namespace orrivane

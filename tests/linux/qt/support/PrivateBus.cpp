#include "PrivateBus.h"

#include <QFile>

#include <csignal>

namespace orrivane {

namespace {

constexpr int bound = 10'000; // milliseconds

const char* const configuration = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

} // namespace

PrivateBus::PrivateBus() {
    const auto path = folder_.filePath("bus.conf");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(QString::fromLatin1(configuration).arg(folder_.path()).toUtf8());
    file.close();
    daemon_.setStandardErrorFile(QProcess::nullDevice());
    daemon_.start("dbus-daemon", {"--config-file=" + path, "--nofork", "--print-address"});
    while (daemon_.waitForReadyRead(bound))
        if (daemon_.canReadLine()) {
            address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
            return;
        }
}

PrivateBus::~PrivateBus() {
    for (const auto& name : names_)
        QDBusConnection::disconnectFromBus(name);
    if (daemon_.processId() != 0)
        ::kill(static_cast<pid_t>(daemon_.processId()), SIGCONT);
    daemon_.kill();
    daemon_.waitForFinished(bound);
}

QDBusConnection PrivateBus::connect() {
    static int count = 0;
    names_.push_back(QStringLiteral("test-%1").arg(++count));
    return QDBusConnection::connectToBus(address_, names_.back());
}

} // namespace orrivane

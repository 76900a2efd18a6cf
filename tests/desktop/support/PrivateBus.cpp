#include "PrivateBus.h"

#include "Surroundings.h"
#include "TempDirectory.h"
#include "WaitFor.h"

#include <stdexcept>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace orrivane::e2e {

namespace {

bool accepts(const std::string& socketPath) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socketPath.size() >= sizeof(address.sun_path)) {
        throw std::runtime_error("path too long for a socket: " + socketPath);
    }
    socketPath.copy(address.sun_path, socketPath.size());
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool connected =
        connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    close(descriptor);
    return connected;
}

std::string configuration(const std::string& socketPath) {
    return "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
           " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
           "<busconfig>\n  <type>session</type>\n  <listen>unix:path=" +
           socketPath +
           "</listen>\n  <standard_session_servicedirs/>\n  <policy context=\"default\">\n"
           "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
           "    <allow eavesdrop=\"true\"/>\n    <allow own=\"*\"/>\n  </policy>\n</busconfig>\n";
}

} // namespace

PrivateBus::PrivateBus(Environment environment, const std::string& directory) {
    const std::string socketPath = directory + "/bus";
    const std::string file = directory + "/bus.conf";
    writeFile(file, configuration(socketPath));
    address_ = "unix:path=" + socketPath;
    setSessionBus(environment, address_);
    ChildProcess::Options child;
    child.arguments = {"dbus-daemon", "--config-file=" + file, "--nofork", "--nopidfile"};
    child.environment = std::move(environment);
    child.logFile = directory + "/bus.log";
    process_.emplace(std::move(child));
    const testing::AssertionResult ready = waitFor("the session bus takes connections", [&] {
        return accepts(socketPath) || !process_->isRunning();
    });
    if (!ready || !process_->isRunning()) {
        throw std::runtime_error("dbus-daemon did not start:\n" + process_->log());
    }
}

} // namespace orrivane::e2e

#include "TrayClient.h"

#include "TempDirectory.h"

#include <algorithm>
#include <stdexcept>

namespace orrivane::e2e {

namespace {

TrayClient client(const std::string& name, const std::string& package, Toolkit toolkit,
                  const std::string& className, std::uint8_t menuButton) {
    TrayClient result;
    result.name = name;
    result.package = package;
    result.toolkit = toolkit;
    result.className = className;
    result.menuButton = menuButton;
    return result;
}

TrayClient parcellite() {
    TrayClient result = client("parcellite", "parcellite", Toolkit::gtk2, "Parcellite", 1);
    result.otherButtonOpens = true;
    result.menuAtPointer = true;
    return result;
}

TrayClient clipman() {
    TrayClient result = client("xfce4-clipman", "xfce4-clipman", Toolkit::gtk3, "Xfce4-clipman", 1);
    result.otherButtonOpens = true;
    // Its settings come from a service on the bus.
    result.needsSessionBus = true;
    return result;
}

TrayClient volumeicon() {
    // Button 1 opens a slider in the middle of the screen, which Escape does not close.
    TrayClient result = client("volumeicon", "volumeicon-alsa", Toolkit::gtk3, "Volumeicon", 3);
    result.otherButtonOpens = true;
    return result;
}

TrayClient gxkb() {
    TrayClient result = client("gxkb", "gxkb", Toolkit::gtk3, "Gxkb", 3);
    result.prefersStatusNotifier = true;
    return result;
}

TrayClient nmTray() {
    TrayClient result = client("nm-tray", "nm-tray", Toolkit::qt5, "nm-tray", 1);
    result.otherButtonOpens = true;
    result.prefersStatusNotifier = true;
    return result;
}

TrayClient kteatime() {
    TrayClient result = client("kteatime", "kteatime", Toolkit::qt5, "kteatime", 3);
    result.prefersStatusNotifier = true;
    return result;
}

TrayClient qjackctl() {
    TrayClient result = client("qjackctl", "qjackctl", Toolkit::qt6, "QjackCtl", 3);
    result.prefersStatusNotifier = true;
    result.files = {{".config/rncbc.org/QjackCtl.conf",
                     "[Options]\nSystemTray=true\nStartMinimized=true\nSingleton=false\n"
                     "DBusEnabled=false\nJackDBusEnabled=false\nAlsaSeqEnabled=false\n"}};
    return result;
}

} // namespace

ChildProcess TrayClient::start(const Environment& environment, const std::string& logFile) const {
    const std::string& home = environment.at("HOME");
    for (const auto& [path, text] : files) {
        writeFile(home + "/" + path, text);
    }
    ChildProcess::Options child;
    child.arguments = {name};
    child.environment = environment;
    child.logFile = logFile;
    child.workingDirectory = home;
    return ChildProcess(std::move(child));
}

const std::vector<TrayClient>& trayClients() {
    static const std::vector<TrayClient> clients{parcellite(), clipman(),  volumeicon(), gxkb(),
                                                 nmTray(),     kteatime(), qjackctl()};
    return clients;
}

const TrayClient& trayClient(const std::string& name) {
    const std::vector<TrayClient>& clients = trayClients();
    const auto found = std::find_if(clients.begin(), clients.end(),
                                    [&](const TrayClient& client) { return client.name == name; });
    if (found == clients.end()) {
        throw std::out_of_range("no tray application is called " + name);
    }
    return *found;
}

} // namespace orrivane::e2e

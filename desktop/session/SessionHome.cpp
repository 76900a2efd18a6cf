#include <desktop/session/SessionHome.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

extern char** environ; // NOLINT: POSIX declares it nowhere

namespace orrivane::desktop {

namespace {

namespace fs = std::filesystem;

Environment inheritedEnvironment() {
    Environment result;
    for (char** word = environ; *word; ++word) {
        const std::string text = *word;
        const auto sign = text.find('=');
        if (sign != std::string::npos)
            result.emplace(text.substr(0, sign), text.substr(sign + 1));
    }
    // What belongs to the desktop outside.
    for (const auto* name : {"WAYLAND_DISPLAY", "XAUTHORITY", "SESSION_MANAGER",
                             "AT_SPI_BUS_ADDRESS", "DBUS_SESSION_BUS_PID", "DESKTOP_STARTUP_ID",
                             "QT_SCALE_FACTOR", "QT_QPA_PLATFORM", "QT_QPA_PLATFORMTHEME"})
        result.erase(name);
    return result;
}

// Undecorated windows, no menu of the root's, nothing on the keyboard.
constexpr const char* windowManagerText =
    "<?xml version=\"1.0\"?>\n"
    "<openbox_config xmlns=\"http://openbox.org/3.4/rc\">\n"
    "  <focus><focusNew>yes</focusNew></focus>\n"
    "  <placement><policy>Smart</policy></placement>\n"
    "  <desktops><number>1</number></desktops>\n"
    "  <mouse>\n"
    "    <context name=\"Client\">\n"
    "      <mousebind button=\"Left\" action=\"Press\"><action name=\"Focus\"/>"
    "<action name=\"Raise\"/></mousebind>\n"
    "    </context>\n"
    "    <context name=\"Titlebar\">\n"
    "      <mousebind button=\"Left\" action=\"Press\"><action name=\"Focus\"/>"
    "<action name=\"Raise\"/></mousebind>\n"
    "      <mousebind button=\"Left\" action=\"Drag\"><action name=\"Move\"/></mousebind>\n"
    "    </context>\n"
    "    <context name=\"Close\">\n"
    "      <mousebind button=\"Left\" action=\"Click\"><action name=\"Close\"/></mousebind>\n"
    "    </context>\n"
    "  </mouse>\n"
    "</openbox_config>\n";

std::string endOf(const std::string& path) {
    std::ifstream file(path);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    constexpr std::size_t enough = 400;
    return text.size() > enough ? text.substr(text.size() - enough) : text;
}

} // namespace

SessionHome::SessionHome(const SessionOptions& options) {
    const char* parent = std::getenv("TMPDIR");
    std::string name =
        std::string(parent && *parent ? parent : "/tmp") + "/orrivane-desktop-XXXXXX";
    if (!mkdtemp(name.data()))
        throw std::runtime_error("no folder can be made below " + name + "; set TMPDIR");
    folder_ = name;
    for (const auto* each : {"config", "run", "logs", "data", "cache"})
        fs::create_directory(fs::path(folder_) / each);
    fs::permissions(fs::path(folder_) / "run", fs::perms::owner_all);
    config_ = options.config.empty() ? folder_ + "/config" : fs::absolute(options.config).string();
    fs::create_directories(config_);
    choices_ = options.log.empty() ? folder_ + "/choices" : fs::absolute(options.log).string();
    std::ofstream(folder_ + "/rc.xml") << windowManagerText;
}

SessionHome::~SessionHome() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

Environment SessionHome::environment() const {
    auto result = inheritedEnvironment();
    result["HOME"] = folder_;
    result["XDG_CONFIG_HOME"] = config_;
    result["XDG_RUNTIME_DIR"] = folder_ + "/run";
    result["XDG_DATA_HOME"] = folder_ + "/data";
    result["XDG_CACHE_HOME"] = folder_ + "/cache";
    result["ORRIVANE_DESKTOP_LOG"] = choices_;
    result["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1";
    result["XDG_CURRENT_DESKTOP"] = "Orrivane";
    return result;
}

std::string SessionHome::logOf(const std::string& program) const {
    return folder_ + "/logs/" + program;
}

std::string SessionHome::lastWordsOf(const std::string& program) const {
    return endOf(logOf(program));
}

} // namespace orrivane::desktop

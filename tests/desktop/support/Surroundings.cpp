#include "Surroundings.h"

#include <cstdlib>
#include <filesystem>

namespace orrivane::e2e {

Environment plainEnvironment() {
    Environment result{{"LANG", "C.UTF-8"}, {"LC_ALL", "C.UTF-8"}};
    for (const char* name : {"PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS",
                             "TSAN_OPTIONS", "LLVM_PROFILE_FILE", "GCOV_PREFIX"}) {
        if (const char* value = std::getenv(name)) {
            result[name] = value;
        }
    }
    return result;
}

Environment graphicalEnvironment(const std::string& display, const std::string& home,
                                 const std::string& runtimeDirectory) {
    Environment result = plainEnvironment();
    result["DISPLAY"] = display;
    result["HOME"] = home;
    result["XDG_CONFIG_HOME"] = home + "/.config";
    result["XDG_CACHE_HOME"] = home + "/.cache";
    result["XDG_DATA_HOME"] = home + "/.local/share";
    result["XDG_STATE_HOME"] = home + "/.local/state";
    result["XDG_RUNTIME_DIR"] = runtimeDirectory;
    result["XDG_SESSION_TYPE"] = "x11";
    // Programs that run once a user keep their lock there.
    result["TMPDIR"] = home + "/tmp";
    for (const char* name :
         {"TMPDIR", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
        std::filesystem::create_directories(result[name]);
    }
    result["GDK_BACKEND"] = "x11";
    result["QT_QPA_PLATFORM"] = "xcb";
    result["GSETTINGS_BACKEND"] = "keyfile";
    result["NO_AT_BRIDGE"] = "1";
    result["GTK_A11Y"] = "none";
    // Otherwise a mixer's tray icon would start a sound server of its own.
    result["PULSE_SERVER"] = "unix:" + runtimeDirectory + "/no-sound-server";
    setSessionBus(result, "");
    result["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=" + runtimeDirectory + "/no-system-bus";
    return result;
}

void setSessionBus(Environment& environment, const std::string& address) {
    environment["DBUS_SESSION_BUS_ADDRESS"] =
        address.empty() ? "unix:path=" + environment["XDG_RUNTIME_DIR"] + "/no-bus" : address;
}

} // namespace orrivane::e2e

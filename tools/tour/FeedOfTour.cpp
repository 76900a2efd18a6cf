#include <Orrivane/CommandLine.h>
#include <linux/updater/UpdateSettings.h>

#include <cstdlib>

namespace orrivane {

// The program of the tour is told its feed and key; the one that users get has them built in.
UpdateSettings UpdateSettings::ofBuild() {
    const auto value = [](const char* name) -> std::string {
        const char* text = std::getenv(name);
        return text ? text : "";
    };
    UpdateSettings settings;
    settings.feed = value("ORRIVANE_TOUR_FEED");
    settings.key = value("ORRIVANE_TOUR_KEY");
    settings.running = CommandLine::version();
    settings.policy = isSecureOrLoopbackAddress;
    return settings;
}

} // namespace orrivane

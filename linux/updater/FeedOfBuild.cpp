#include <Orrivane/CommandLine.h>
#include <linux/updater/UpdateSettings.h>

namespace orrivane {

UpdateSettings UpdateSettings::ofBuild() {
    UpdateSettings settings;
    settings.feed = ORRIVANE_FEED_URL;
    settings.key = ORRIVANE_FEED_KEY;
    settings.running = CommandLine::version();
    return settings;
}

} // namespace orrivane

#include <linux/updater/NetworkModule.h>

#include <linux/updater/QtNetwork.h>

extern "C" {

[[gnu::visibility("default")]] orrivane::NetworkModule::Version orrivane_network_version;
[[gnu::visibility("default")]] orrivane::NetworkModule::Make orrivane_network_make;

const char* orrivane_network_version() {
    return ORRIVANE_VERSION;
}

orrivane::Network* orrivane_network_make(orrivane::MainLoop& loop) {
    return new orrivane::QtNetwork(loop);
}
}

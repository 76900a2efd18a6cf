#include <Orrivane/platform/Platform.h>

#include <cstdlib>

namespace orrivane {

namespace {
const Platform* installedPlatform = nullptr;
}

void Platform::install(const Platform& platform) {
    installedPlatform = &platform;
}

const Platform& Platform::installed() {
    if (!installedPlatform)
        std::abort();
    return *installedPlatform;
}

} // namespace orrivane

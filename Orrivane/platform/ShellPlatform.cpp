#include <Orrivane/platform/ShellPlatform.h>

#include <cstdlib>

namespace orrivane {

namespace {
const ShellPlatform* installedPlatform = nullptr;
}

void ShellPlatform::install(const ShellPlatform& platform) {
    installedPlatform = &platform;
}

const ShellPlatform& ShellPlatform::installed() {
    if (!installedPlatform)
        std::abort();
    return *installedPlatform;
}

} // namespace orrivane

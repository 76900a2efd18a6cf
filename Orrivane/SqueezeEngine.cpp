#include <Orrivane/SqueezeEngine.h>

#include <Orrivane/platform/GlobalPreferences.h>
#include <Orrivane/platform/ProcessLauncher.h>
#include <Orrivane/platform/ShellPlatform.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string>

namespace orrivane {

namespace {

constexpr std::int64_t belowSpacing = 2;
constexpr std::int64_t smallestPadding = 2;

} // namespace

SqueezeState SqueezeEngine::read() {
    return read(ShellPlatform::installed().globalPreferences);
}

bool SqueezeEngine::apply(std::int64_t spacing) {
    return apply(spacing, ShellPlatform::installed().globalPreferences);
}

bool SqueezeEngine::reset() {
    return reset(ShellPlatform::installed().globalPreferences);
}

void SqueezeEngine::restartControlCenter() {
    restartControlCenter(ShellPlatform::installed().processLauncher);
}

SqueezeState SqueezeEngine::read(GlobalPreferences& preferences) {
    SqueezeState state;
    state.spacing = preferences.copyValue(spacingKey);
    state.padding = preferences.copyValue(paddingKey);
    return state;
}

bool SqueezeEngine::apply(std::int64_t spacing, GlobalPreferences& preferences) {
    // First: a spacing that ends the program must not have been stored.
    const auto besides = padding(spacing);
    preferences.setValue(spacingKey, spacing);
    preferences.setValue(paddingKey, besides);
    return preferences.synchronize();
}

bool SqueezeEngine::reset(GlobalPreferences& preferences) {
    preferences.setValue(spacingKey, std::nullopt);
    preferences.setValue(paddingKey, std::nullopt);
    return preferences.synchronize();
}

void SqueezeEngine::restartControlCenter(ProcessLauncher& launcher) {
    launcher.launch(std::string(restartProgram), {std::string(menuBarProcess)});
}

std::int64_t SqueezeEngine::padding(std::int64_t spacing) {
    if (spacing < std::numeric_limits<std::int64_t>::min() + belowSpacing)
        std::abort();
    return std::max(smallestPadding, spacing - belowSpacing);
}

} // namespace orrivane

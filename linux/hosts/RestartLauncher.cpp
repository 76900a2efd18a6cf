#include <linux/hosts/RestartLauncher.h>

#include <Orrivane/SqueezeEngine.h>

namespace orrivane {

bool RestartLauncher::launch(const std::string& path, const std::vector<std::string>& arguments) {
    const bool launched = launcher_.launch(path, arguments);
    if (path == SqueezeEngine::restartProgram && arguments.size() == 1 &&
        arguments.front() == SqueezeEngine::menuBarProcess)
        restarted_();
    return launched;
}

} // namespace orrivane

#include "ScriptedWorld.h"

#include <tests/support/ScriptedGlobalPreferences.h>
#include <tests/support/ScriptedLoginService.h>
#include <tests/support/ScriptedProcessLauncher.h>
#include <tests/support/ScriptedUpdater.h>
#include <tests/support/contracts/GlobalPreferencesContract.h>
#include <tests/support/contracts/LoginServiceContract.h>
#include <tests/support/contracts/ProcessLauncherContract.h>
#include <tests/support/contracts/UpdaterContract.h>

#include <memory>

namespace orrivane {
namespace {

struct GlobalPreferencesWorld : ScriptedWorld {
    using Body = ScriptedGlobalPreferences;
    std::unique_ptr<Body> body = std::make_unique<Body>(journal);

    GlobalPreferences& preferences() { return *body; }
    void reopen() {
        const auto written = body->written;
        body = std::make_unique<Body>(journal);
        body->values = written;
        body->written = written;
    }
    bool storeText(std::string_view key) {
        body->notNumbers.emplace(key);
        return true;
    }
    bool makeUnwritable() {
        body->synchronizes = false;
        return true;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, GlobalPreferencesContract, GlobalPreferencesWorld);

struct ProcessLauncherWorld : ScriptedWorld {
    ScriptedProcessLauncher body{journal};

    ProcessLauncherWorld() { body.missing = {missingProgram()}; }
    ProcessLauncher& launcher() { return body; }
    [[nodiscard]] static std::string program() { return "/usr/bin/program"; }
    [[nodiscard]] static std::string failingProgram() { return "/usr/bin/failing"; }
    [[nodiscard]] static std::string missingProgram() { return "/usr/bin/missing"; }
    [[nodiscard]] std::optional<std::vector<std::string>> argumentsSeen() const {
        if (body.launches.empty() || body.launches.back().path == missingProgram())
            return std::nullopt;
        return body.launches.back().arguments;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, ProcessLauncherContract, ProcessLauncherWorld);

struct LoginServiceWorld : ScriptedWorld {
    ScriptedLoginService body{journal};

    LoginService& service() { return body; }
    void reopen() {
        const auto kept = body.currentStatus;
        ScriptedLoginService next{journal};
        next.currentStatus = kept;
        body = next;
    }
    bool refuse() {
        body.registerError = "Operation not permitted";
        body.unregisterError = "Operation not permitted";
        return true;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, LoginServiceContract, LoginServiceWorld);

struct UpdaterWorld : ScriptedWorld {
    ScriptedUpdater body{journal};

    Updater& updater() { return body; }
    bool changeCanCheck() {
        body.setCanCheck(!body.canCheckForUpdates());
        return true;
    }
    bool findScheduledUpdate(const std::string& version) {
        body.findScheduledUpdate(version);
        return true;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, UpdaterContract, UpdaterWorld);

} // namespace
} // namespace orrivane

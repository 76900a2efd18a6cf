#include "ScriptedWorld.h"

#include <tests/support/ScriptedLog.h>
#include <tests/support/ScriptedUserDefaults.h>
#include <tests/support/ScriptedWorkspace.h>
#include <tests/support/contracts/MainLoopContract.h>
#include <tests/support/contracts/SystemLogContract.h>
#include <tests/support/contracts/UserDefaultsContract.h>
#include <tests/support/contracts/WorkspaceContract.h>

#include <memory>

namespace orrivane {
namespace {

struct MainLoopWorld {
    std::unique_ptr<VirtualLoop> body = std::make_unique<VirtualLoop>();

    MainLoop& loop() { return *body; }
    [[nodiscard]] double elapsed() const { return body->elapsed(); }
    void block(double seconds) { body->block(seconds); }
    void destroyLoop() { body.reset(); }
    template <typename Predicate>
    bool pumpUntil(Predicate holds) {
        constexpr int steps = 1000;
        for (int i = 0; i < steps && !holds(); ++i)
            body->advance(0.01);
        return holds();
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, MainLoopContract, MainLoopWorld);

struct UserDefaultsWorld : ScriptedWorld {
    std::unique_ptr<ScriptedUserDefaults> body = std::make_unique<ScriptedUserDefaults>();

    UserDefaults& defaults() { return *body; }
    void reopen() {
        const auto stored = body->stored;
        body = std::make_unique<ScriptedUserDefaults>();
        body->stored = stored;
    }
    bool changeElsewhere(std::string_view key, bool value) {
        body->changeElsewhere(key, value);
        return true;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, UserDefaultsContract, UserDefaultsWorld);

struct WorkspaceWorld : ScriptedWorld {
    ScriptedWorkspace body{journal};

    Workspace& workspace() { return body; }
    bool cause(SystemNotification notification) {
        body.post(notification);
        return true;
    }
    bool open(std::string_view address) { return body.open(address); }
    [[nodiscard]] bool terminated() const { return body.terminations > 0; }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, WorkspaceContract, WorkspaceWorld);

struct SystemLogWorld : ScriptedWorld {
    ScriptedLog body{journal};

    SystemLog& log() { return body; }
    [[nodiscard]] const std::vector<std::string>& lines() const { return body.lines; }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, SystemLogContract, SystemLogWorld);

} // namespace
} // namespace orrivane

#pragma once

#include <desktop/session/RestartPolicy.h>
#include <desktop/session/SessionHome.h>
#include <desktop/session/SessionOptions.h>
#include <desktop/session/Spawn.h>
#include <desktop/session/Stage.h>

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>

namespace orrivane::desktop {

/// Starts a display, a session bus and the desktop's programs, starts again what ends, and leaves
/// nothing behind.
class Session {
  public:
    explicit Session(SessionOptions options);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    /// Runs until a signal, the display's end or that of the program inside; gives the exit status.
    /// Throws std::runtime_error with a sentence when the desktop does not come up.
    int run();

  private:
    enum class Role {
        essential, ///< its end is the session's
        kept,      ///< started again
        guest,     ///< the program inside
        passing,   ///< ends when it has done its work
    };
    struct Child {
        std::string name;
        Role role;
        Launch launch;
        pid_t process = -1; // -1: given up, or not running
        RestartPolicy policy;
    };

    void startServer();
    void startBus();
    void startDesktop();
    void startGuest();
    Child& start(std::string name, Role role, std::vector<std::string> arguments);
    void startAgain(Child& child);
    [[nodiscard]] std::string readLine(int descriptor, const std::string& what);
    [[nodiscard]] std::string sibling(const std::string& part, const std::string& program) const;

    /// Bounded; throws the sentence when it takes too long or the session is over.
    void waitUntil(const std::function<bool()>& holds, const char* problem);
    /// Waits for signals at most that long; true when the session is over.
    bool wait(int milliseconds);
    void reap();
    void ended(Child& child, int status);
    void announce();
    [[nodiscard]] bool isComplete();

    SessionOptions options_;
    SessionHome home_;
    Environment environment_;
    std::string display_;
    std::list<Child> children_;
    std::unique_ptr<Stage> stage_;
    int signals_ = -1;
    std::optional<int> result_;
};

} // namespace orrivane::desktop

#pragma once

#include <desktop/session/SessionOptions.h>
#include <desktop/session/Spawn.h>

#include <string>

namespace orrivane::desktop {

/// The folders of the desktop's user: a home that passes with the session, and preferences that may
/// stay. Throws std::runtime_error where none can be made.
class SessionHome {
  public:
    explicit SessionHome(const SessionOptions& options);
    SessionHome(const SessionHome&) = delete;
    SessionHome& operator=(const SessionHome&) = delete;
    ~SessionHome();

    /// What every program of the desktop starts with: this process's, less what belongs to the
    /// desktop around it.
    [[nodiscard]] Environment environment() const;
    [[nodiscard]] std::string logOf(const std::string& program) const;
    /// The last of what a program wrote.
    [[nodiscard]] std::string lastWordsOf(const std::string& program) const;
    [[nodiscard]] std::string windowManagerConfig() const { return folder_ + "/rc.xml"; }
    [[nodiscard]] std::string busSocket() const { return folder_ + "/run/bus"; }

  private:
    std::string folder_;
    std::string config_;
    std::string choices_;
};

} // namespace orrivane::desktop

#pragma once

#include <Orrivane/platform/LoginService.h>

#include <string>

namespace orrivane {

/// Launch at login by a file in the user's autostart folder (freedesktop.org, "Desktop Application
/// Autostart"). A file that the user has switched off in the desktop's own settings waits for the
/// user's approval.
class AutostartService : public LoginService {
  public:
    /// `file` is the autostart entry's path; empty where there is no home. `program` is what it
    /// starts, absolute.
    AutostartService(std::string file, std::string program);

    [[nodiscard]] LoginItemStatus status() override;
    [[nodiscard]] std::optional<std::string> registerItem() override;
    [[nodiscard]] std::optional<std::string> unregisterItem() override;

    /// autostart/orrivane.desktop in the user's configuration folder.
    static std::string userFile();
    /// The entry's text. `program` is quoted as an entry's command line has to be.
    static std::string entry(const std::string& program);

  private:
    std::string file_;
    std::string program_;
};

} // namespace orrivane

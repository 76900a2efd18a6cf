#pragma once

namespace orrivane {

class LoginService;
class SystemLog;

/// Launch at login. Stateless: the system's own record is the truth and is asked every time.
struct LoginItem {
    // On the installed platform.
    static bool isEnabled();
    static void setEnabled(bool enabled);

    /// False also while the user still has to approve the registration.
    static bool isEnabled(LoginService& service);
    /// Goes to the service also when nothing would change. A failure is logged and goes no further.
    static void setEnabled(bool enabled, LoginService& service, SystemLog& log);
};

} // namespace orrivane

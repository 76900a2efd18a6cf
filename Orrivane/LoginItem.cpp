#include <Orrivane/LoginItem.h>

#include <Orrivane/platform/LoginService.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/platform/ShellPlatform.h>
#include <Orrivane/platform/SystemLog.h>

#include <string>

namespace orrivane {

bool LoginItem::isEnabled() {
    return isEnabled(ShellPlatform::installed().loginService);
}

void LoginItem::setEnabled(bool enabled) {
    setEnabled(enabled, ShellPlatform::installed().loginService, Platform::installed().log);
}

bool LoginItem::isEnabled(LoginService& service) {
    return service.status() == LoginItemStatus::enabled;
}

void LoginItem::setEnabled(bool enabled, LoginService& service, SystemLog& log) {
    const auto error = enabled ? service.registerItem() : service.unregisterItem();
    if (!error)
        return;
    const std::string verb = enabled ? "register" : "unregister";
    log.write("LoginItem: failed to " + verb + " login item: " + *error);
}

} // namespace orrivane

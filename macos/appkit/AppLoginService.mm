#import <macos/appkit/AppLoginService.h>

#import <macos/appkit/Conversions.h>

#import <ServiceManagement/ServiceManagement.h>

namespace orrivane {

namespace {

// The answer decides, not the error object: that one may be set although all went well.
std::optional<std::string> problem(BOOL succeeded, NSError* error) {
    if (succeeded)
        return std::nullopt;
    const auto text = toString(error.localizedDescription);
    return text.empty() ? "the system gave no reason" : text;
}

} // namespace

LoginItemStatus AppLoginService::status() {
    switch (SMAppService.mainAppService.status) {
    case SMAppServiceStatusNotRegistered:
        return LoginItemStatus::notRegistered;
    case SMAppServiceStatusEnabled:
        return LoginItemStatus::enabled;
    case SMAppServiceStatusRequiresApproval:
        return LoginItemStatus::requiresApproval;
    case SMAppServiceStatusNotFound:
        break;
    }
    return LoginItemStatus::notFound;
}

std::optional<std::string> AppLoginService::registerItem() {
    NSError* error = nil;
    const BOOL succeeded = [SMAppService.mainAppService registerAndReturnError:&error];
    return problem(succeeded, error);
}

std::optional<std::string> AppLoginService::unregisterItem() {
    NSError* error = nil;
    const BOOL succeeded = [SMAppService.mainAppService unregisterAndReturnError:&error];
    return problem(succeeded, error);
}

} // namespace orrivane

#import <macos/appkit/UnifiedLog.h>

#include <os/log.h>

#include <string>

namespace orrivane {

void UnifiedLog::write(std::string_view line) {
    const std::string text(line);
    os_log(OS_LOG_DEFAULT, "%{public}s", text.c_str());
}

} // namespace orrivane

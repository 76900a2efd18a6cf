#import <macos/appkit/UnifiedLog.h>

#import "support/Pump.h"

#import <macos/appkit/Conversions.h>
#include <tests/support/contracts/SystemLogContract.h>

#import <OSLog/OSLog.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace orrivane {
namespace {

/// The log as the system gives it back to the process that wrote it, which needs no permission.
struct UnifiedLogWorld {
    UnifiedLog body;
    std::string problem;
    std::vector<std::string> before = everyLine(); // of an earlier test in this process

    [[nodiscard]] std::optional<std::string> whyUnavailable() const {
        return problem.empty() ? std::nullopt : std::optional("the log cannot be read: " + problem);
    }
    SystemLog& log() { return body; }
    std::vector<std::string> lines() {
        auto all = everyLine();
        const auto old = std::min(before.size(), all.size());
        all.erase(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(old));
        return all;
    }
    template <typename Condition>
    bool pumpUntil(Condition condition) {
        return orrivane::pumpUntil(condition, 30);
    }

  private:
    // A store is a snapshot: every look needs a new one.
    std::vector<std::string> everyLine() {
        std::vector<std::string> lines;
        @autoreleasepool {
            NSError* error = nil;
            OSLogStore* store = [OSLogStore storeWithScope:OSLogStoreCurrentProcessIdentifier
                                                     error:&error];
            OSLogEnumerator* entries = [store entriesEnumeratorAndReturnError:&error];
            if (entries == nil)
                problem = error == nil ? "no reason given" : toString(error.localizedDescription);
            for (OSLogEntry* entry in entries)
                if ([entry.composedMessage hasPrefix:@"Orrivane: "])
                    lines.push_back(toString(entry.composedMessage));
        }
        return lines;
    }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Unified, SystemLogContract, UnifiedLogWorld);

} // namespace
} // namespace orrivane

#pragma once

#include <linux/updater/ReleaseChoice.h>
#include <linux/updater/UpdateOperation.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orrivane {

/// A package that was downloaded and verified, or a sentence that says why there is none.
struct PackageResult {
    std::string path; ///< absolute; empty when there is a problem
    std::optional<std::string> problem;
};

/// Where releases come from. Callbacks run on the main thread, once at most, never inside the call,
/// and may destroy the operation.
class ReleaseSource {
  public:
    virtual ~ReleaseSource() = default;

    /// Whether there is a feed to read and a key to trust.
    [[nodiscard]] virtual bool isUsable() const = 0;
    /// Reads the feed. `skipped` (empty: none) is a version that is not offered.
    [[nodiscard]] virtual std::unique_ptr<UpdateOperation>
    check(const std::string& skipped, std::function<void(ReleaseChoice)> finished) = 0;
    /// Gets the offer's file; `progress` is told the part that has arrived, 0 to 1.
    [[nodiscard]] virtual std::unique_ptr<UpdateOperation>
    download(const ReleaseOffer& offer, std::function<void(double)> progress,
             std::function<void(PackageResult)> finished) = 0;
};

} // namespace orrivane

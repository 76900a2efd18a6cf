#pragma once

#include <linux/updater/PackageFolder.h>
#include <linux/updater/PublicKey.h>
#include <linux/updater/ReleaseSource.h>
#include <linux/updater/UpdateSettings.h>

#include <memory>
#include <optional>

namespace orrivane {

class MainLoop;
class Network;

/// A signed feed on a server.
class NetworkReleaseSource : public ReleaseSource {
  public:
    /// Network and loop outlive it.
    NetworkReleaseSource(UpdateSettings settings, PackageFolder folder, Network& network,
                         MainLoop& loop);
    ~NetworkReleaseSource() override;

    [[nodiscard]] bool isUsable() const override { return key_.has_value(); }
    [[nodiscard]] std::unique_ptr<UpdateOperation>
    check(const std::string& skipped, std::function<void(ReleaseChoice)> finished) override;
    [[nodiscard]] std::unique_ptr<UpdateOperation>
    download(const ReleaseOffer& offer, std::function<void(double)> progress,
             std::function<void(PackageResult)> finished) override;

    static constexpr std::int64_t largestFeed = std::int64_t{4} << 20; ///< bytes

  private:
    class Check;
    class Download;

    UpdateSettings settings_;
    PackageFolder folder_;
    Network& network_;
    MainLoop& loop_;
    std::optional<PublicKey> key_;
};

} // namespace orrivane

#pragma once

#include <linux/updater/PublicKey.h>
#include <linux/updater/ReleaseFeed.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orrivane {

/// A release to offer: its entry was signed, and its file is one that can be asked for.
struct ReleaseOffer {
    ReleaseEntry entry;
    std::string fileName;    ///< letters, digits and ".", "_", "+", "~", "-" only
    std::int64_t length = 0; ///< bytes
};

/// Neither: there is nothing newer.
struct ReleaseChoice {
    std::optional<ReleaseOffer> offer;
    std::optional<std::string> problem; ///< a sentence for the user
};

/// The newest release for this system that is newer than `running`. The newest one is offered or
/// refused; an older one never takes its place. Pre-releases are for those who run one. `skipped`
/// (empty: none) is not offered.
ReleaseChoice chooseRelease(std::span<const ReleaseEntry> entries, const PublicKey& key,
                            std::string_view running, std::string_view skipped);

/// The largest file that is asked for, in bytes.
inline constexpr std::int64_t largestPackage = std::int64_t{512} << 20;

/// Whether `type` (a media type without parameters) can be a package that an installer opens.
bool isPackageType(std::string_view type);

} // namespace orrivane

#pragma once

#include <linux/updater/AddressPolicy.h>

#include <string>

namespace orrivane {

/// Where releases come from and how long is waited for them.
struct UpdateSettings {
    std::string feed;    ///< address; empty: there is none, and nothing can be checked
    std::string key;     ///< base64 of the Ed25519 key that releases are signed for
    std::string running; ///< this program's version
    AddressPolicy policy = isSecureAddress;

    double idleTime = 30;      ///< seconds in which nothing arrives
    double feedTime = 60;      ///< seconds for a whole feed
    double packageTime = 3600; ///< seconds for a whole package

    /// What this build was configured with (ORRIVANE_FEED_URL, ORRIVANE_FEED_KEY).
    static UpdateSettings ofBuild();
};

} // namespace orrivane

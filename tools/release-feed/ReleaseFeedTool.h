#pragma once

#include <linux/updater/ReleaseFeed.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orrivane {

/// The developers' side of a release: keys, signatures and the feed's text.
struct KeyPair {
    std::string publicKey; ///< base64 of 32 bytes; what programs are built with
    std::string secretKey; ///< base64 of 64 bytes; stays with the developers

    /// A new pair, or the one that belongs to `seed` (32 bytes).
    static KeyPair generate();
    static KeyPair ofSeed(std::span<const unsigned char> seed);
};

/// The base64 of the Ed25519 signature; absent when `secretKey` is none.
std::optional<std::string> sign(std::string_view message, const std::string& secretKey);

/// Signs the entry, whose file is already signed, and leaves it as it is read from a feed. False
/// when `secretKey` is none or a feed cannot carry the entry.
bool signEntry(ReleaseEntry& entry, const std::string& secretKey);

/// One "item" element, and a whole feed of such.
std::string feedItem(const ReleaseEntry& entry);
std::string feed(const std::vector<ReleaseEntry>& entries);

} // namespace orrivane

#pragma once

#include <linux/updater/ReleaseFeed.h>
#include <tools/release-feed/ReleaseFeedTool.h>

#include <array>
#include <string>

namespace orrivane {

/// Keys that exist for tests only; the second pair is somebody else's.
inline const KeyPair& testKeys() {
    static const KeyPair keys = KeyPair::ofSeed(std::array<unsigned char, 32>{1, 2, 3});
    return keys;
}
inline const KeyPair& foreignKeys() {
    static const KeyPair keys = KeyPair::ofSeed(std::array<unsigned char, 32>{9, 9, 9});
    return keys;
}

/// A release whose file holds `contents`, properly signed.
inline ReleaseEntry release(const std::string& version, const std::string& address,
                            const std::string& contents = "package",
                            const KeyPair& keys = testKeys()) {
    ReleaseEntry entry;
    entry.title = "Orrivane " + version;
    entry.version = version;
    entry.notes = "Faster & smaller";
    entry.notesFormat = "plain-text";
    entry.system = "linux";
    entry.address = address;
    entry.length = std::to_string(contents.size());
    entry.type = "application/vnd.debian.binary-package";
    entry.fileSignature = *sign(contents, keys.secretKey);
    signEntry(entry, keys.secretKey);
    return entry;
}

/// The entry with one thing changed, and signed again: what its developers could have published.
template <typename Change>
ReleaseEntry resigned(ReleaseEntry entry, Change change) {
    change(entry);
    signEntry(entry, testKeys().secretKey);
    return entry;
}

} // namespace orrivane

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrivane {

/// One entry ("item") of a release feed, every field as it stands there, without the white space
/// around it; empty where the entry has none. Nothing in it is to be trusted before its signature
/// has been verified.
struct ReleaseEntry {
    std::string title;
    std::string version;      ///< what is compared
    std::string shortVersion; ///< what users see
    std::string notes;        ///< what is new
    std::string notesFormat;  ///< "plain-text" or "markdown"; else HTML
    std::string notesLink;
    std::string channel; ///< empty: for everyone
    std::string system;  ///< empty: for the system that reads the feed
    std::string address;
    std::string length; ///< bytes
    std::string type;
    std::string fileSignature;  ///< base64, of the file's bytes
    std::string entrySignature; ///< base64, of `signedText`

    [[nodiscard]] const std::string& displayVersion() const {
        return shortVersion.empty() ? version : shortVersion;
    }
    /// The text that the entry's own signature is made for: every field but that signature, each
    /// with its name and length, so that no two entries share one. It binds the file's signature to
    /// the version: a file once released cannot come back as a newer one.
    [[nodiscard]] std::string signedText() const;

    friend bool operator==(const ReleaseEntry&, const ReleaseEntry&) = default;
};

struct FeedReading {
    std::vector<ReleaseEntry> entries;
    std::optional<std::string> problem; ///< a sentence for the user; then there are no entries
};

/// Reads a whole feed. A document with a document type, an entity of its own or any fault is
/// refused as a whole.
FeedReading readReleaseFeed(std::string_view xml);

} // namespace orrivane

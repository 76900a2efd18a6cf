#include <linux/updater/ReleaseChoice.h>

#include <linux/updater/ReleaseVersion.h>

#include <QByteArray>
#include <QUrl>

#include <algorithm>
#include <charconv>
#include <utility>

namespace orrivane {

namespace {

constexpr std::string_view packageSuffix = ".deb";
constexpr std::string_view packageTypes[] = {
    "application/vnd.debian.binary-package",
    "application/x-debian-package",
    "application/x-deb",
    "application/octet-stream",
};
constexpr std::size_t longestName = 128;

struct Ranked {
    const ReleaseEntry* entry;
    ReleaseVersion version;
};

bool isForUs(const ReleaseEntry& entry) {
    return (entry.system.empty() || entry.system == "linux") && entry.channel.empty() &&
           !entry.address.empty();
}

bool isNameCharacter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') ||
           std::string_view("._+~-").find(character) != std::string_view::npos;
}

bool isPackageName(std::string_view name) {
    return name.size() <= longestName && name.size() > packageSuffix.size() &&
           name.ends_with(packageSuffix) && name.find("..") == std::string_view::npos &&
           !name.starts_with('.') && !name.starts_with('-') &&
           std::all_of(name.begin(), name.end(), isNameCharacter);
}

// What the last part of the path stands for when nothing in it is encoded any more.
std::optional<std::string> fileName(const std::string& address) {
    const auto path =
        QUrl(QString::fromStdString(address), QUrl::StrictMode).path(QUrl::FullyEncoded).toUtf8();
    for (const auto& part : path.split('/'))
        if (QByteArray::fromPercentEncoding(part) == "..")
            return std::nullopt;
    auto name = QByteArray::fromPercentEncoding(path.mid(path.lastIndexOf('/') + 1)).toStdString();
    return isPackageName(name) ? std::optional(std::move(name)) : std::nullopt;
}

std::optional<std::int64_t> fileLength(std::string_view text) {
    std::int64_t length = 0;
    const auto* end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, length);
    const bool whole = error == std::errc() && stopped == end;
    return whole && length > 0 ? std::optional(length) : std::nullopt;
}

ReleaseChoice refusal(const ReleaseEntry& entry, const std::string& reason) {
    return {std::nullopt, "Version " + entry.version + " cannot be installed: " + reason + "."};
}

ReleaseChoice offerOrRefusal(const ReleaseEntry& entry, const PublicKey& key) {
    // First, because only then the rest of it says anything.
    if (!key.verifies(entry.signedText(), entry.entrySignature))
        return refusal(entry, "its entry in the release feed is not signed by Orrivane");
    const auto name = fileName(entry.address);
    if (!name)
        return refusal(entry, "its file does not have the name of a Debian package");
    if (!isPackageType(entry.type))
        return refusal(entry, "its file is not announced as a Debian package");
    const auto length = fileLength(entry.length);
    if (!length)
        return refusal(entry, "the length of its file is not known");
    if (*length > largestPackage)
        return refusal(entry, "its file is larger than 512 MiB");
    if (!isSignature(entry.fileSignature))
        return refusal(entry, "its file is not signed");
    return {ReleaseOffer{entry, *name, *length}, std::nullopt};
}

} // namespace

bool isPackageType(std::string_view type) {
    return std::find(std::begin(packageTypes), std::end(packageTypes), type) !=
           std::end(packageTypes);
}

ReleaseChoice chooseRelease(std::span<const ReleaseEntry> entries, const PublicKey& key,
                            std::string_view running, std::string_view skipped) {
    const auto own = ReleaseVersion::parse(running);
    if (!own)
        return {std::nullopt, "This copy of Orrivane does not know its own version."};
    std::optional<Ranked> newest;
    for (const auto& entry : entries) {
        if (!isForUs(entry))
            continue;
        const auto version = ReleaseVersion::parse(entry.version);
        if (!version)
            return {std::nullopt, "The release feed cannot be used: it has an entry without a "
                                  "version that can be compared."};
        if (version->isPreRelease() && !own->isPreRelease())
            continue;
        if (!newest || *version > newest->version)
            newest = Ranked{&entry, *version};
    }
    if (!newest || newest->version <= *own)
        return {};
    if (const auto refused = ReleaseVersion::parse(skipped); refused == newest->version)
        return {};
    return offerOrRefusal(*newest->entry, key);
}

} // namespace orrivane

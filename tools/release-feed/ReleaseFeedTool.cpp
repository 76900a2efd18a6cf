#include <tools/release-feed/ReleaseFeedTool.h>

#include <sodium.h>

#include <array>

namespace orrivane {

namespace {

std::string base64(const unsigned char* bytes, std::size_t size) {
    std::string text(sodium_base64_encoded_len(size, sodium_base64_VARIANT_ORIGINAL), '\0');
    sodium_bin2base64(text.data(), text.size(), bytes, size, sodium_base64_VARIANT_ORIGINAL);
    text.pop_back(); // its end
    return text;
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        switch (character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += character;
        }
    }
    return result;
}

std::string element(const std::string& name, const std::string& value,
                    const std::string& attributes = {}) {
    if (value.empty())
        return {};
    return "      <" + name + attributes + ">" + escaped(value) + "</" + name + ">\n";
}

std::string attribute(const std::string& name, const std::string& value) {
    return value.empty() ? std::string() : ' ' + name + "=\"" + escaped(value) + '"';
}

} // namespace

KeyPair KeyPair::generate() {
    if (sodium_init() < 0)
        return {};
    std::array<unsigned char, crypto_sign_SEEDBYTES> seed{};
    randombytes_buf(seed.data(), seed.size());
    return ofSeed(seed);
}

KeyPair KeyPair::ofSeed(std::span<const unsigned char> seed) {
    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> publicKey{};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secretKey{};
    if (seed.size() != crypto_sign_SEEDBYTES || sodium_init() < 0)
        return {};
    crypto_sign_seed_keypair(publicKey.data(), secretKey.data(), seed.data());
    return {base64(publicKey.data(), publicKey.size()), base64(secretKey.data(), secretKey.size())};
}

std::optional<std::string> sign(std::string_view message, const std::string& secretKey) {
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> key{};
    std::size_t count = 0;
    if (sodium_init() < 0 ||
        sodium_base642bin(key.data(), key.size(), secretKey.data(), secretKey.size(), nullptr,
                          &count, nullptr, sodium_base64_VARIANT_ORIGINAL) != 0 ||
        count != key.size())
        return std::nullopt;
    std::array<unsigned char, crypto_sign_BYTES> signature{};
    crypto_sign_detached(signature.data(), nullptr,
                         reinterpret_cast<const unsigned char*>(message.data()), message.size(),
                         key.data());
    return base64(signature.data(), signature.size());
}

bool signEntry(ReleaseEntry& entry, const std::string& secretKey) {
    // As programs will read it: a feed does not keep white space at the ends nor every line's end.
    auto reading = readReleaseFeed(feed({entry}));
    if (reading.entries.size() != 1)
        return false;
    entry = std::move(reading.entries.front());
    auto signature = sign(entry.signedText(), secretKey);
    if (!signature)
        return false;
    entry.entrySignature = std::move(*signature);
    return true;
}

std::string feedItem(const ReleaseEntry& entry) {
    return "    <item>\n" + element("title", entry.title) +
           element("sparkle:version", entry.version) +
           element("sparkle:shortVersionString", entry.shortVersion) +
           element("sparkle:channel", entry.channel) +
           element("sparkle:releaseNotesLink", entry.notesLink) +
           element("description", entry.notes, attribute("sparkle:format", entry.notesFormat)) +
           element("sparkle:edSignature", entry.entrySignature) + "      <enclosure" +
           attribute("url", entry.address) + attribute("length", entry.length) +
           attribute("type", entry.type) + attribute("sparkle:os", entry.system) +
           attribute("sparkle:edSignature", entry.fileSignature) + "/>\n    </item>\n";
}

std::string feed(const std::vector<ReleaseEntry>& entries) {
    std::string text = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                       "<rss version=\"2.0\" "
                       "xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">\n"
                       "  <channel>\n    <title>Orrivane</title>\n";
    for (const auto& entry : entries)
        text += feedItem(entry);
    return text + "  </channel>\n</rss>\n";
}

} // namespace orrivane

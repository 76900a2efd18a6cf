#include <linux/updater/PublicKey.h>

#include <sodium.h>

namespace orrivane {

namespace {

template <std::size_t size>
std::optional<std::array<unsigned char, size>> bytesOfBase64(std::string_view text) {
    std::array<unsigned char, size> bytes{};
    std::size_t count = 0;
    // With an end to write, the library stops quietly at the first character it cannot read.
    const char* end = nullptr;
    const bool read = sodium_base642bin(bytes.data(), bytes.size(), text.data(), text.size(),
                                        nullptr, &count, &end, sodium_base64_VARIANT_ORIGINAL) == 0;
    if (!read || count != size || end != text.data() + text.size())
        return std::nullopt;
    return bytes;
}

using Signature = std::array<unsigned char, crypto_sign_BYTES>;

} // namespace

std::optional<PublicKey> PublicKey::fromBase64(std::string_view text) {
    static_assert(size == crypto_sign_PUBLICKEYBYTES);
    const auto bytes = bytesOfBase64<size>(text);
    if (!bytes || sodium_init() < 0)
        return std::nullopt;
    PublicKey key;
    key.bytes_ = *bytes;
    return key;
}

bool PublicKey::verifies(std::span<const unsigned char> message, std::string_view signature) const {
    const auto bytes = bytesOfBase64<crypto_sign_BYTES>(signature);
    return bytes && crypto_sign_verify_detached(bytes->data(), message.data(), message.size(),
                                                bytes_.data()) == 0;
}

bool PublicKey::verifies(std::string_view message, std::string_view signature) const {
    return verifies(
        std::span(reinterpret_cast<const unsigned char*>(message.data()), message.size()),
        signature);
}

bool isSignature(std::string_view text) {
    return bytesOfBase64<std::tuple_size_v<Signature>>(text).has_value();
}

} // namespace orrivane

#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace orrivane {

/// The Ed25519 key that releases are signed for.
class PublicKey {
  public:
    /// Absent unless `text` is the base64 of 32 bytes.
    static std::optional<PublicKey> fromBase64(std::string_view text);

    /// Whether `signature`, the base64 of 64 bytes, was made for exactly this message.
    [[nodiscard]] bool verifies(std::span<const unsigned char> message,
                                std::string_view signature) const;
    [[nodiscard]] bool verifies(std::string_view message, std::string_view signature) const;

  private:
    static constexpr std::size_t size = 32;

    std::array<unsigned char, size> bytes_{};
};

/// Whether `text` is the base64 of as many bytes as a signature has.
bool isSignature(std::string_view text);

} // namespace orrivane

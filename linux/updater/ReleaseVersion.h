#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrivane {

/// A version as releases carry it: numbers with dots, then perhaps a pre-release ("1.10.0-rc.2",
/// "2.0b3"), then perhaps "+" and a note that does not count. Missing numbers are zeros, numbers
/// have no upper end, and a pre-release comes before its release.
class ReleaseVersion {
  public:
    /// Absent for anything else, and for more than 64 characters.
    static std::optional<ReleaseVersion> parse(std::string_view text);

    [[nodiscard]] bool isPreRelease() const { return !preRelease_.empty(); }

    friend std::strong_ordering operator<=>(const ReleaseVersion& left,
                                            const ReleaseVersion& right);
    friend bool operator==(const ReleaseVersion& left, const ReleaseVersion& right) {
        return (left <=> right) == std::strong_ordering::equal;
    }

  private:
    // Digits without leading zeros or lower-case letters, never a mixture.
    using Parts = std::vector<std::string>;

    bool readNumbers(std::string_view& rest);
    bool readPreRelease(std::string_view rest);

    Parts numbers_; // without zeros at the end
    Parts preRelease_;
};

} // namespace orrivane

#pragma once

#include <Orrivane/platform/GlobalPreferences.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace orrivane {

/// Global preferences in the file that docs/menu-bar-preferences.md describes. Reads go to the file
/// every time; what was set is written by `synchronize`, beside whatever else stands there.
class MenuBarPreferenceStore : public GlobalPreferences {
  public:
    /// An empty path, as of a user without a home, stores nothing.
    explicit MenuBarPreferenceStore(std::string path);

    [[nodiscard]] std::optional<std::int64_t> copyValue(std::string_view key) override;
    void setValue(std::string_view key, std::optional<std::int64_t> value) override;
    bool synchronize() override;

    using Changes = std::map<std::string, std::optional<std::int64_t>, std::less<>>;
    /// `text` with these values set or removed, everything else left as it is, comments included.
    static std::string edited(std::string_view text, const Changes& changes);

  private:
    std::string path_;
    Changes pending_;
};

} // namespace orrivane

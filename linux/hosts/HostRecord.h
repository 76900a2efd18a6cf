#pragma once

#include <linux/support/Outcome.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace orrivane {

class FileLock;

/// What a tray's own settings were before the program changed them: a small file, written whole or
/// not at all, that outlives the program so that the user always gets the own settings back.
class HostRecord {
  public:
    /// Values may hold any bytes, names neither '=' nor white space.
    using Fields = std::map<std::string, std::string, std::less<>>;

    /// An empty path, as of a user without a home, keeps nothing.
    explicit HostRecord(std::string path)
        : path_(std::move(path)) {}

    [[nodiscard]] const std::string& path() const { return path_; }
    /// Whether it is this program's to change now; a failure says why not.
    [[nodiscard]] Outcome heldBy(const FileLock& lock) const;
    /// Also when it is damaged.
    [[nodiscard]] bool exists() const;
    /// Absent when there is none, or none that is whole.
    [[nodiscard]] std::optional<Fields> read() const;
    /// One that is damaged, or cannot be read, is put aside as `path`.damaged: it may be all that
    /// is left of the user's settings.
    [[nodiscard]] Outcome write(const Fields& fields) const;
    /// Back to what `read` gave earlier.
    [[nodiscard]] Outcome restore(const std::optional<Fields>& before) const;

    static std::string text(const Fields& fields);
    static std::optional<Fields> parse(std::string_view text);
    /// Empty where there is no such field.
    static std::string field(const Fields& fields, std::string_view name);

  private:
    [[nodiscard]] Outcome failure(const char* what, const std::string& why) const;

    std::string path_;
};

} // namespace orrivane

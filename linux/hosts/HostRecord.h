#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace orrivane {

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
    /// Whether anything can be kept at all.
    [[nodiscard]] bool isKept() const { return !path_.empty(); }
    /// Also when it is damaged.
    [[nodiscard]] bool exists() const;
    /// Absent when there is none, or none that is whole.
    [[nodiscard]] std::optional<Fields> read() const;
    /// False when it could not be written. A damaged one is put aside, as `path`.damaged: it may
    /// be all that is left of the user's settings.
    [[nodiscard]] bool write(const Fields& fields) const;
    /// Back to what `read` gave earlier.
    void restore(const std::optional<Fields>& before) const;

    static std::string text(const Fields& fields);
    static std::optional<Fields> parse(std::string_view text);

  private:
    std::string path_;
};

/// The contents of a regular file of at most a megabyte; absent for anything else.
std::optional<std::string> readSmallFile(const std::string& path);

} // namespace orrivane

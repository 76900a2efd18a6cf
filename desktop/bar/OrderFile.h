#pragma once

#include <desktop/bar/ItemRow.h>

#include <string>
#include <string_view>
#include <vector>

namespace orrivane::desktop {

/// The order of the status items on disk, so that a bar that is started again finds it. One item a
/// line, left to right: its number within its application, a blank, the application.
class OrderFile {
  public:
    /// An empty path keeps nothing.
    explicit OrderFile(std::string path)
        : path_(std::move(path)) {}
    /// In the session's runtime folder; keeps nothing where there is none.
    static OrderFile ofSession();

    /// Empty when there is no order; lines that are none are passed over.
    [[nodiscard]] std::vector<ItemKey> read() const;
    /// The file holds either the old order or the whole new one. False when it could not be
    /// written.
    bool write(const std::vector<ItemKey>& order) const;

    /// An application's name as it is kept: without line breaks, which would end its line.
    static std::string keptName(std::string_view application);

  private:
    std::string path_;
};

} // namespace orrivane::desktop

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orrivane {

/// The one setting of a tint2rc that spaces the tray's icons: the third number of
/// `systray_padding`, or the first where there is no third. Lines are without their ends, so what
/// ends them is never touched, and neither is any other byte.
struct Tint2Config {
    /// The line that counts, the last one of that key, within `text`; absent when there is none.
    static std::optional<std::string_view> paddingLine(std::string_view text);
    /// Pixels between two icons, as tint2 reads them.
    static int gap(std::string_view paddingLine);
    /// The same line with another gap.
    static std::string withGap(std::string_view paddingLine, int gap);

    /// `text` with the line `line`, which lies in it, exchanged.
    static std::string replaced(std::string_view text, std::string_view line,
                                std::string_view with);
    /// The last line that reads exactly `line`; absent when there is none.
    static std::optional<std::string_view> find(std::string_view text, std::string_view line);

    /// What has to stand in front of a line appended to `text`: nothing, or its kind of line end.
    static std::string separator(std::string_view text);
    /// `text` with a line more, and an end of the line only where the last line had one before.
    static std::string appended(std::string_view text, std::string_view line);
    /// Undoes `appended`, also after other lines have been written behind: `line` lies in `text`.
    static std::string removed(std::string_view text, std::string_view line,
                               std::string_view separator);
};

} // namespace orrivane

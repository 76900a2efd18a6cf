#pragma once

#include <linux/hosts/HostProcess.h>
#include <linux/hosts/HostRecord.h>

#include <optional>
#include <string>

namespace orrivane {

/// tint2: the gap between its tray's icons is a number in its configuration file. The user's line
/// is kept in a record and comes back as it was; a line that the user has changed since is the
/// user's and stays. Every operation reads the files anew. Any thread, one at a time.
class Tint2Host {
  public:
    explicit Tint2Host(HostRecord record)
        : record_(std::move(record)) {}

    /// The file that `process` reads: the one it was started with, else its user's.
    static std::string configFile(const HostProcess& process);

    /// One sentence where the file gives no way to a tighter tray; empty where it does.
    [[nodiscard]] std::string limitation(const std::string& configFile) const;

    /// Makes the gap `reduction` pixels smaller than the user's, but not smaller than none. After
    /// a failure the user's settings are as they were.
    [[nodiscard]] Outcome apply(const std::string& configFile, int reduction) const;
    /// Gives the user's line back, in the file it was taken from. After a failure the record
    /// stays for another time.
    [[nodiscard]] Outcome reset() const;

    /// Makes the panel read its file again. False when it was not told.
    static bool reload(const HostProcess& process);

    static constexpr int widestGap = 1000; ///< pixels

  private:
    [[nodiscard]] Outcome giveBack(const HostRecord::Fields& fields) const;
    /// `problem`, after the record was put back, and what went wrong with that.
    [[nodiscard]] Outcome withRecordBack(const Outcome& problem,
                                         const std::optional<HostRecord::Fields>& record) const;

    HostRecord record_;
};

} // namespace orrivane

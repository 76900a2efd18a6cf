#pragma once

#include <Orrivane/platform/ProcessLauncher.h>
#include <tests/support/CallJournal.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace orrivane {

class ScriptedProcessLauncher : public ProcessLauncher {
  public:
    struct Launch {
        std::string path;
        std::vector<std::string> arguments;

        friend bool operator==(const Launch&, const Launch&) = default;
    };

    explicit ScriptedProcessLauncher(CallJournal calls = {})
        : journal(std::move(calls)) {}

    bool succeeds = true;
    std::set<std::string> missing; ///< paths where there is no program
    std::vector<Launch> launches;  ///< failed ones included
    CallJournal journal;

    bool launch(const std::string& path, const std::vector<std::string>& arguments) override {
        std::string call = "launch " + path;
        for (const auto& argument : arguments)
            call += " " + argument;
        journal.note(call);
        launches.push_back({path, arguments});
        return succeeds && !missing.contains(path);
    }
};

} // namespace orrivane

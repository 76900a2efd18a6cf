#pragma once

#include <Orrivane/platform/SystemLog.h>
#include <tests/support/CallJournal.h>

#include <string>
#include <utility>
#include <vector>

namespace orrivane {

class ScriptedLog : public SystemLog {
  public:
    explicit ScriptedLog(CallJournal calls = {})
        : journal(std::move(calls)) {}

    std::vector<std::string> lines;
    CallJournal journal;

    void write(std::string_view line) override {
        journal.note("log " + std::string(line));
        lines.emplace_back(line);
    }
};

} // namespace orrivane

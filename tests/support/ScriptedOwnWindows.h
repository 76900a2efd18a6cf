#pragma once

#include <Orrivane/platform/OwnWindows.h>
#include <tests/support/CallJournal.h>

#include <utility>

namespace orrivane {

class ScriptedOwnWindows : public OwnWindows {
  public:
    explicit ScriptedOwnWindows(CallJournal calls = {})
        : journal(std::move(calls)) {}

    std::vector<std::int64_t> numbers;
    bool mainViewWindowVisible = false;
    CallJournal journal;

    std::vector<std::int64_t> windowNumbers() override {
        journal.note("windowNumbers");
        return numbers;
    }
    bool mainViewWindowIsVisible() override {
        journal.note("mainViewWindowIsVisible");
        return mainViewWindowVisible;
    }
};

} // namespace orrivane

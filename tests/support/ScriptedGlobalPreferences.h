#pragma once

#include <Orrivane/platform/GlobalPreferences.h>
#include <tests/support/CallJournal.h>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace orrivane {

class ScriptedGlobalPreferences : public GlobalPreferences {
  public:
    using Values = std::map<std::string, std::int64_t, std::less<>>;

    explicit ScriptedGlobalPreferences(CallJournal calls = {})
        : journal(std::move(calls)) {}

    Values values;  ///< what reads find: also what was set and not written yet
    Values written; ///< what the last successful synchronisation left behind
    std::set<std::string, std::less<>> notNumbers; ///< keys that hold something else
    bool synchronizes = true;
    CallJournal journal;

    std::optional<std::int64_t> copyValue(std::string_view key) override {
        journal.note("copyValue " + std::string(key));
        const auto found = values.find(key);
        if (notNumbers.contains(key) || found == values.end())
            return std::nullopt;
        return found->second;
    }
    void setValue(std::string_view key, std::optional<std::int64_t> value) override {
        const std::string name(key);
        journal.note("setValue " + name + " " + (value ? std::to_string(*value) : "none"));
        notNumbers.erase(name);
        if (value)
            values.insert_or_assign(name, *value);
        else
            values.erase(name);
    }
    bool synchronize() override {
        journal.note("synchronize");
        if (synchronizes)
            written = values;
        return synchronizes;
    }
};

} // namespace orrivane

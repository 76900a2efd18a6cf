#pragma once

#include <Orrivane/platform/UserDefaults.h>
#include <Orrivane/support/ObserverList.h>
#include <tests/support/CallJournal.h>

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace orrivane {

/// Announces a change inside the call that makes it.
class ScriptedUserDefaults : public UserDefaults {
  public:
    using Values = std::map<std::string, bool, std::less<>>;

    explicit ScriptedUserDefaults(CallJournal calls = {})
        : journal(std::move(calls)) {}

    Values stored;
    Values fallbacks;
    CallJournal journal;

    /// As `setBool`, by somebody else.
    void changeElsewhere(std::string_view key, bool value) { store(key, value); }
    [[nodiscard]] std::size_t observerCount() const { return observers_.count(); }

    void registerDefault(std::string_view key, bool value) override {
        journal.note("registerDefault " + std::string(key));
        fallbacks.insert_or_assign(std::string(key), value);
    }
    bool boolForKey(std::string_view key) override {
        if (const auto found = stored.find(key); found != stored.end())
            return found->second;
        const auto fallback = fallbacks.find(key);
        return fallback != fallbacks.end() && fallback->second;
    }
    void setBool(std::string_view key, bool value) override {
        journal.note("setBool " + std::string(key) + (value ? " true" : " false"));
        store(key, value);
    }
    Subscription onChange(std::function<void()> changed) override {
        return observers_.add(std::move(changed));
    }

  private:
    void store(std::string_view key, bool value) {
        const auto [entry, isNew] = stored.try_emplace(std::string(key), value);
        if (isNew || std::exchange(entry->second, value) != value)
            observers_.notify();
    }

    ObserverList<> observers_;
};

} // namespace orrivane

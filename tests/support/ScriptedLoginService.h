#pragma once

#include <Orrivane/platform/LoginService.h>
#include <tests/support/CallJournal.h>

#include <utility>

namespace orrivane {

class ScriptedLoginService : public LoginService {
  public:
    explicit ScriptedLoginService(CallJournal calls = {})
        : journal(std::move(calls)) {}

    LoginItemStatus currentStatus = LoginItemStatus::notRegistered;
    LoginItemStatus statusAfterRegistering = LoginItemStatus::enabled;
    std::optional<std::string> registerError;
    std::optional<std::string> unregisterError;
    CallJournal journal;

    LoginItemStatus status() override {
        journal.note("status");
        return currentStatus;
    }
    std::optional<std::string> registerItem() override {
        journal.note("registerItem");
        if (!registerError)
            currentStatus = statusAfterRegistering;
        return registerError;
    }
    std::optional<std::string> unregisterItem() override {
        journal.note("unregisterItem");
        if (!unregisterError)
            currentStatus = LoginItemStatus::notRegistered;
        return unregisterError;
    }
};

} // namespace orrivane

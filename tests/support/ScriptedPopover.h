#pragma once

#include <Orrivane/platform/Popover.h>
#include <tests/support/CallJournal.h>

#include <optional>
#include <utility>

namespace orrivane {

class ScriptedPopover : public Popover {
  public:
    explicit ScriptedPopover(CallJournal calls = {})
        : journal(std::move(calls)) {}

    std::optional<View> root;
    Size contentSize; ///< as it took effect
    bool shown = false;
    const StatusItem* anchor = nullptr; ///< what it was last shown below
    CallJournal journal;

    /// The user clicks elsewhere.
    void clickOutside() { shown = false; }

    void setRoot(const View& view) override {
        journal.note("popover.setRoot");
        root = view;
    }
    void setContentSize(Size size) override {
        journal.note("popover.setContentSize");
        if (root)
            contentSize = size;
    }
    bool isShown() override { return shown; }
    void show(StatusItem& below) override {
        journal.note("popover.show");
        anchor = &below;
        shown = true;
    }
    void performClose() override {
        journal.note("popover.performClose");
        shown = false;
    }
};

} // namespace orrivane

#pragma once

#include <Orrivane/platform/StatusBar.h>
#include <tests/support/CallJournal.h>

#include <utility>
#include <vector>

namespace orrivane {

/// A status bar that remembers its items, also those that were removed.
class ScriptedStatusBar : public StatusBar {
  public:
    struct Item {
        double length = 0;
        bool hasButton = true;
        bool removed = false;
        std::optional<Drawing> image;
        std::function<void()> action;
        std::optional<int> imagePosition;
        std::string title;
        std::optional<std::string> toolTip;
    };

    explicit ScriptedStatusBar(CallJournal calls = {})
        : journal(std::move(calls)) {}

    bool givesButtons = true;
    std::vector<std::shared_ptr<Item>> items; ///< every item ever made, in order
    CallJournal journal;

    /// What the user's click does: nothing without a button or an action.
    void click(std::size_t index = 0) const {
        const auto item = items.at(index);
        const auto action = item->action;
        if (item->hasButton && !item->removed && action)
            action();
    }

    std::unique_ptr<StatusItem> createItem(double length) override {
        journal.note("createItem");
        items.push_back(std::make_shared<Item>());
        items.back()->length = length;
        items.back()->hasButton = givesButtons;
        return std::make_unique<Handle>(items.back(), journal);
    }

  private:
    class Handle : public StatusItem {
      public:
        Handle(std::shared_ptr<Item> item, CallJournal journal)
            : item_(std::move(item))
            , journal_(std::move(journal)) {}
        Handle(const Handle&) = delete;
        Handle& operator=(const Handle&) = delete;
        ~Handle() override {
            journal_.note("removeItem");
            item_->removed = true;
        }

        [[nodiscard]] bool hasButton() const override { return item_->hasButton; }
        void setImage(const Drawing& image) override { item_->image = image; }
        void setAction(std::function<void()> action) override { item_->action = std::move(action); }
        void setImagePosition(int position) override { item_->imagePosition = position; }
        void setTitle(const std::string& title) override { item_->title = title; }
        void setToolTip(const std::optional<std::string>& toolTip) override {
            item_->toolTip = toolTip;
        }

      private:
        std::shared_ptr<Item> item_;
        CallJournal journal_;
    };
};

} // namespace orrivane

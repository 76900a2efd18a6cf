#pragma once

#include <Orrivane/platform/TrayPanel.h>
#include <tests/support/CallJournal.h>

#include <map>
#include <optional>
#include <utility>

namespace orrivane {

class ScriptedTrayPanel : public TrayPanel {
  public:
    explicit ScriptedTrayPanel(CallJournal calls = {})
        : journal(std::move(calls)) {}

    std::map<int, int> levels = {{9, 25}}; ///< by level key; every other key has level 0

    std::optional<TrayPanelConfiguration> configuration; ///< absent before `create`
    int creations = 0;
    std::optional<View> root;
    Rect frame;
    bool visible = false;
    CallJournal journal;

    /// The buttons of the row as it is shown, left to right.
    [[nodiscard]] std::vector<Button> buttons() const;
    /// What a click on the button at `index` does; a button without an action does nothing.
    void click(std::size_t index) const;
    void clickSecondary(std::size_t index) const;

    int windowLevelForKey(int key) override;
    void create(const TrayPanelConfiguration& panelConfiguration) override;
    void setRoot(const View& view) override;
    void setFrame(const Rect& rect) override;
    void orderFrontRegardless() override;
    void orderOut() override;
};

} // namespace orrivane

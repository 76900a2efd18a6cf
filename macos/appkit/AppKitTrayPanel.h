#pragma once

#include <Orrivane/platform/TrayPanel.h>

@class NSPanel;
@class ORVStripPanelView;

namespace orrivane {

class AppKitTrayPanel : public TrayPanel {
  public:
    AppKitTrayPanel() = default;
    AppKitTrayPanel(const AppKitTrayPanel&) = delete;
    AppKitTrayPanel& operator=(const AppKitTrayPanel&) = delete;
    ~AppKitTrayPanel() override;

    [[nodiscard]] int windowLevelForKey(int key) override;
    void create(const TrayPanelConfiguration& configuration) override;
    void setRoot(const View& root) override;
    void setFrame(const Rect& frame) override;
    void orderFrontRegardless() override;
    void orderOut() override;

  private:
    NSPanel* _Nullable panel_ = nullptr;
    ORVStripPanelView* _Nullable strip_ = nullptr;
};

} // namespace orrivane

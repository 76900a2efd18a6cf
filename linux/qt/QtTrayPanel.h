#pragma once

#include <linux/support/PanelStage.h>
#include <linux/support/PixelRect.h>

#include <Orrivane/platform/TrayPanel.h>

#include <QRect>

#include <memory>

namespace orrivane {

class StripWidget;

/// The tray as a window that the window manager leaves alone. It is mapped while it is wanted and
/// the dock is not covered. Level and behaviour need no configuration: the stage puts the panel
/// right above the dock, and every desktop shows it.
class QtTrayPanel : public TrayPanel {
  public:
    /// The stage lives longer than the panel.
    explicit QtTrayPanel(PanelStage& stage);
    ~QtTrayPanel() override;

    [[nodiscard]] int windowLevelForKey(int key) override;
    void create(const TrayPanelConfiguration& configuration) override;
    void setRoot(const View& root) override;
    void setFrame(const Rect& frame) override;
    void orderFrontRegardless() override;
    void orderOut() override;

    /// Null before create.
    [[nodiscard]] StripWidget* widget() const { return widget_.get(); }

  private:
    void layOutLater();
    void layOutCells();
    [[nodiscard]] QRect pixels(double left, double top, double right, double bottom) const;
    void place();
    void updateMapping();
    bool prepareWindow();
    void refreshBackdrop();
    void stageChanged();

    PanelStage& stage_;
    std::unique_ptr<StripWidget> widget_;
    View root_;
    Rect frame_;      // points, origin at the bottom left
    PixelRect place_; // root pixels
    bool cellsStale_ = false;
    bool wanted_ = false;
    bool adopted_ = false;
    bool backdropStale_ = true;
    std::shared_ptr<int> backdropRequest_; // who still waits for an answer holds it weakly
    Subscription change_;
};

} // namespace orrivane

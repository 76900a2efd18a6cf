#pragma once

#include <Orrivane/platform/MainLoop.h>
#include <Orrivane/support/OncePerTurn.h>

#include <linux/support/PanelStage.h>
#include <linux/x11/PixelReader.h>
#include <linux/x11/Presser.h>
#include <linux/x11/Redirection.h>
#include <linux/x11/StatusItems.h>

#include <vector>

namespace orrivane::x11 {

/// Keeps the panel directly above the dock, tells when the dock is covered, and reads what the dock
/// shows behind the panel.
class X11PanelStage : public PanelStage {
  public:
    X11PanelStage(Connection& connection, MainLoop& loop, X11Screens& screens, WindowTree& tree,
                  StatusItems& items, Presser& presser);

    double scale() const override { return screens_.scale(); }
    PixelRect pixels(const Rect& frame) const override { return screens_.space().toPixels(frame); }
    void adopt(std::uint32_t window) override;
    void place(const PixelRect& rect) override;
    bool dockIsCovered() override;
    bool isComposited() override;
    void backdrop(const PixelRect& rect,
                  std::function<void(std::shared_ptr<const PixelImage>)> completion) override;
    Subscription onChange(std::function<void()> changed) override {
        return changes_.add(std::move(changed));
    }

  private:
    /// Everything the panel has to react to, as one comparable value.
    struct Situation {
        bool covered = false;
        bool composited = false;
        bool displaced = false; ///< the panel is mapped and not where it belongs in the stack

        friend bool operator==(const Situation&, const Situation&) = default;
    };
    struct Question {
        PixelRect rect;
        std::function<void(std::shared_ptr<const PixelImage>)> completion;
    };
    [[nodiscard]] Situation look();
    void lookAgain();
    [[nodiscard]] bool isDisplaced(const TreeWindow& dockTop) const;
    [[nodiscard]] std::uint32_t dockTopLevel();
    /// For each column of `rect` the root column whose dock pixels stand for it.
    [[nodiscard]] std::vector<int> freeColumns(const PixelRect& rect) const;
    [[nodiscard]] std::shared_ptr<const PixelImage> readBackdrop(const PixelRect& rect);
    void answerWaiting();

    Connection& connection_;
    MainLoop& loop_;
    X11Screens& screens_;
    WindowTree& tree_;
    StatusItems& items_;
    Presser& presser_;
    PixelReader reader_;
    Redirection redirection_;
    std::uint32_t panel_ = 0;
    std::uint32_t compositor_ = 0;
    bool compositorKnown_ = false;
    Situation last_;
    std::uint64_t lastGeneration_ = 0;
    ObserverList<> changes_;
    OncePerTurn look_;
    Subscription events_;
    // Questions that wait until the dock has drawn itself anew.
    std::vector<Question> waiting_;
    Subscription settle_;
};

} // namespace orrivane::x11

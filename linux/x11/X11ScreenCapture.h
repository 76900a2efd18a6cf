#pragma once

#include <Orrivane/platform/MainLoop.h>
#include <Orrivane/platform/ScreenCapture.h>

#include <linux/x11/PixelReader.h>
#include <linux/x11/Redirection.h>
#include <linux/x11/StatusItems.h>

#include <optional>
#include <unordered_map>
#include <vector>

namespace orrivane::x11 {

/// Pictures of tray icons, each drawn where it stands in the bar's band. All captures begun in one
/// turn of the loop go to the server together. An icon that something covers is redirected first
/// and read when its program has drawn it anew; the rest is read where it is.
class X11ScreenCapture : public ScreenCapture {
  public:
    X11ScreenCapture(Connection& connection, MainLoop& loop, X11Screens& screens, WindowTree& tree,
                     StatusItems& items);

    void shareableContent(std::function<void(std::optional<ShareableContent>)> completion) override;
    void captureImage(const ShareableWindow& window, const CaptureConfiguration& configuration,
                      std::function<void(std::optional<Image>)> completion) override;
    bool preflightAccess() override;
    bool requestAccess() override { return preflightAccess(); }

  private:
    struct Job {
        std::uint32_t window;
        CaptureConfiguration configuration;
        std::function<void(std::optional<Image>)> completion;
        bool waited = false; ///< for its redirected content
    };
    struct Sent;
    /// What an icon looked like and what was made of it.
    struct Drawn {
        std::shared_ptr<const PixelImage> icon;
        CaptureConfiguration configuration;
        double top; // pixels of the canvas
        Image image;
    };

    void flushJobs();
    [[nodiscard]] std::optional<PixelReader::Read> begin(Job& job, const StatusItem& item);
    [[nodiscard]] bool somethingLiesOver(const StatusItem& item) const;
    void receive(std::vector<Sent> sent);
    [[nodiscard]] Image place(std::shared_ptr<const PixelImage> icon, const Sent& sent);
    void endRedirectionsNotIn(const std::vector<Job>& jobs);

    Connection& connection_;
    MainLoop& loop_;
    X11Screens& screens_;
    WindowTree& tree_;
    StatusItems& items_;
    PixelReader reader_;
    Redirection redirection_;
    std::vector<std::uint32_t> redirected_;
    std::unordered_map<std::uint32_t, Drawn> drawn_;
    std::vector<Job> jobs_;
    std::vector<Job> waiting_;
    Subscription settle_;
    std::optional<bool> permitted_;
    bool flushPosted_ = false;
    std::shared_ptr<X11ScreenCapture*> self_;
};

} // namespace orrivane::x11

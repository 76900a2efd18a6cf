#pragma once

#include <linux/updater/ReleaseSource.h>
#include <linux/updater/UpdatePage.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace orrivane {

/// A source that answers when a test says so.
class ScriptedReleases : public ReleaseSource {
  public:
    bool usable = true;
    std::vector<std::string> checks;    ///< the version skipped in each
    std::vector<std::string> downloads; ///< the version of each
    int running = 0;                    ///< operations that live

    [[nodiscard]] bool isUsable() const override { return usable; }
    std::unique_ptr<UpdateOperation> check(const std::string& skipped,
                                           std::function<void(ReleaseChoice)> finished) override {
        checks.push_back(skipped);
        checked_ = std::move(finished);
        return std::make_unique<Operation>(running);
    }
    std::unique_ptr<UpdateOperation>
    download(const ReleaseOffer& offer, std::function<void(double)> progress,
             std::function<void(PackageResult)> finished) override {
        downloads.push_back(offer.entry.version);
        progressed_ = std::move(progress);
        downloaded_ = std::move(finished);
        return std::make_unique<Operation>(running);
    }

    void answerCheck(ReleaseChoice choice) { std::exchange(checked_, nullptr)(std::move(choice)); }
    void answerDownload(PackageResult result) {
        std::exchange(downloaded_, nullptr)(std::move(result));
    }
    void progress(double part) { progressed_(part); }
    void offer(const std::string& version) {
        ReleaseOffer offer;
        offer.entry.version = version;
        offer.entry.notes = "New in " + version;
        offer.fileName = "orrivane_" + version + ".deb";
        offer.length = 1234567;
        answerCheck({offer, std::nullopt});
    }

  private:
    struct Operation : UpdateOperation {
        explicit Operation(int& running)
            : running_(running) {
            ++running_;
        }
        ~Operation() override { --running_; }
        int& running_;
    };

    std::function<void(ReleaseChoice)> checked_;
    std::function<void(double)> progressed_;
    std::function<void(PackageResult)> downloaded_;
};

/// Remembers the page instead of showing it.
class ScriptedPresenter : public UpdatePresenter {
  public:
    std::optional<UpdatePage> page; ///< absent while there is no window
    double progress = 0;
    int broughtForward = 0;
    bool focused = false;

    void present(const UpdatePage& shown, std::function<void(UpdateChoice)> chosen) override {
        page = shown;
        chosen_ = std::move(chosen);
    }
    void setProgress(double part) override { progress = part; }
    void bringForward() override { ++broughtForward; }
    void dismiss() override { page.reset(); }
    [[nodiscard]] bool hasFocus() const override { return focused; }

    void press(const std::string& label) {
        for (const auto& button : page->buttons)
            if (button.label == label) {
                std::exchange(chosen_, nullptr)(button.choice);
                return;
            }
        throw std::logic_error("there is no button \"" + label + '"');
    }
    void close() { std::exchange(chosen_, nullptr)(page->onClose); }

  private:
    std::function<void(UpdateChoice)> chosen_;
};

} // namespace orrivane

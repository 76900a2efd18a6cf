#pragma once

#include <linux/updater/UpdatePage.h>

#include <memory>

namespace orrivane {

/// The updater's window. It is made when something is shown and destroyed when it is dismissed.
class UpdateWindow : public UpdatePresenter {
  public:
    UpdateWindow();
    ~UpdateWindow() override;

    void present(const UpdatePage& page, std::function<void(UpdateChoice)> chosen) override;
    void setProgress(double part) override;
    void bringForward() override;
    void dismiss() override;
    [[nodiscard]] bool hasFocus() const override;

  private:
    class Dialog;
    std::unique_ptr<Dialog> dialog_;
};

} // namespace orrivane

#pragma once

#include <Orrivane/view/View.h>

#include <QWidget>

#include <memory>

class QVBoxLayout;

namespace orrivane {

class Binding;

/// Shows a whole screen. The value's `appeared` and `disappeared` run when the owner says so.
class ScreenView : public QWidget {
  public:
    ScreenView();
    ~ScreenView() override;

    void setRoot(const View& root);
    /// Runs the newest `appeared`, or `disappeared`, of every node that has one; twice in a row
    /// only once.
    void setShown(bool shown);
    /// The height that shows all of the content at the present width, toolkit pixels.
    [[nodiscard]] int naturalHeight() const;

  private:
    void orderFocus();

    View root_;
    std::unique_ptr<Binding> binding_;
    QVBoxLayout* layout_;
    std::vector<QWidget*> focusOrder_;
    bool shown_ = false;
};

} // namespace orrivane

#pragma once

#include <Orrivane/view/View.h>

#include <QWidget>

#include <memory>

class QVBoxLayout;

namespace orrivane {

class Binding;

/// Shows a whole screen. Its controls are made when it is first shown, because many are never. The
/// value's `appeared` and `disappeared` run when the owner says so.
class ScreenView : public QWidget {
  public:
    ScreenView();
    ~ScreenView() override;

    void setRoot(const View& root);
    /// Runs the newest `appeared`, or `disappeared`, of every node that has one; twice in a row
    /// only once.
    void setShown(bool shown);
    /// The height that shows all of the content at the present width, toolkit pixels; 0 before the
    /// first showing.
    [[nodiscard]] int naturalHeight() const;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void render();
    void orderFocus();

    View root_;
    std::unique_ptr<Binding> binding_;
    QVBoxLayout* layout_;
    std::vector<QWidget*> focusOrder_;
    bool shown_ = false;
};

} // namespace orrivane

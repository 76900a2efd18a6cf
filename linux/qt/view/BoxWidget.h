#pragma once

#include <Orrivane/view/View.h>

#include <QWidget>

#include <optional>

namespace orrivane {

/// Room around one widget, and what lies behind it.
class BoxWidget : public QWidget {
  public:
    explicit BoxWidget(QWidget* inner);

    void set(const Insets& padding, const std::optional<Background>& background);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::optional<Background> background_;
};

} // namespace orrivane

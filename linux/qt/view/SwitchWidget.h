#pragma once

#include <QCheckBox>

namespace orrivane {

/// A check box that looks like a switch: role, keyboard and click area stay the toolkit's.
class SwitchWidget : public QCheckBox {
  public:
    SwitchWidget();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }

  private:
    [[nodiscard]] QSize track() const;
    [[nodiscard]] int textLeft() const;
};

} // namespace orrivane

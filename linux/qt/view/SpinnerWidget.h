#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace orrivane {

/// Turns while it can be seen, and costs nothing else.
class SpinnerWidget : public QWidget {
  public:
    SpinnerWidget();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    QBasicTimer timer_;
    int step_ = 0;
};

} // namespace orrivane

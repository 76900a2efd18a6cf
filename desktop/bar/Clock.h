#pragma once

#include <desktop/support/Theme.h>

#include <QTimer>
#include <QWidget>

namespace orrivane::desktop {

/// Day and time at the right end of the bar; as wide as it ever gets.
class Clock final : public QWidget {
    Q_OBJECT

  public:
    Clock(const Theme& theme, QWidget* parent);

    [[nodiscard]] int neededWidth() const;

  private:
    void paintEvent(QPaintEvent* event) override;
    void tick();
    [[nodiscard]] QFont face() const;

    Theme theme_;
    QString text_;
    QTimer timer_;
};

} // namespace orrivane::desktop

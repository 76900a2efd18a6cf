#pragma once

#include <desktop/support/Theme.h>

#include <QTimer>
#include <QWidget>

namespace orrivane::desktop {

/// The camera housing, as the hardware has it: black, above everything, with rounded lower corners,
/// and no obstacle to the pointer.
class Notch final : public QWidget {
    Q_OBJECT

  public:
    explicit Notch(const Theme& theme);

    /// Pixels of the root window; empty hides it.
    void setPlace(const QRect& place);
    /// Called when a top level may have come above it.
    void stayAbove();

  private:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] QRegion outline() const;
    [[nodiscard]] double radius() const;

    Theme theme_;
    QTimer rise_;
};

} // namespace orrivane::desktop

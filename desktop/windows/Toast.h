#pragma once

#include <desktop/support/Theme.h>

#include <QTimer>
#include <QWidget>

namespace orrivane::desktop {

/// Says for a few seconds, at the bottom of its parent, what happened.
class Toast final : public QWidget {
    Q_OBJECT

  public:
    Toast(const Theme& theme, QWidget* parent);

    void say(const QString& text);

  private:
    void paintEvent(QPaintEvent* event) override;

    Theme theme_;
    QString text_;
    QTimer end_;
};

} // namespace orrivane::desktop

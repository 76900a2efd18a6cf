#pragma once

#include <desktop/support/Theme.h>

#include <QImage>
#include <QMargins>
#include <QObject>

class QMenu;
class QPainter;

namespace orrivane::desktop {

/// Gives one menu rounded corners and a shadow with no compositor running: the menu's window is
/// larger than its panel and shows, around the panel, what the screen showed there before.
class MenuBackdrop final : public QObject {
    Q_OBJECT

  public:
    /// Becomes a child of `menu`.
    MenuBackdrop(QMenu& menu, const Theme& theme);

    static MenuBackdrop* of(const QWidget* menu);
    /// Between panel and window; nothing above, so that the bar above the menu is never covered.
    static QMargins shadowRoom(const Theme& theme);

    void paint(QPainter& painter) const;

  private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void prepare();
    void limitInput() const;
    QRect panel() const;
    QImage screenBehind() const;
    void paintShadow(QPainter& painter) const;

    QMenu& menu_;
    Theme theme_;
    QImage surface_;
};

} // namespace orrivane::desktop

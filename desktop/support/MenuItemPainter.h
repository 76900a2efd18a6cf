#pragma once

#include <desktop/support/Theme.h>

#include <QStyleOptionMenuItem>

class QPainter;

namespace orrivane::desktop {

/// Measures and draws one line of a menu.
class MenuItemPainter {
  public:
    MenuItemPainter(const Theme& theme, const QStyleOptionMenuItem& item);

    /// Of the whole line, given what its text takes.
    QSize size(const QSize& contents) const;
    void paint(QPainter& painter) const;

  private:
    bool isSeparator() const { return item_.menuItemType == QStyleOptionMenuItem::Separator; }
    bool isHighlighted() const;
    int textLeft() const;
    void paintSeparator(QPainter& painter) const;
    void paintCheckMark(QPainter& painter) const;
    void paintArrow(QPainter& painter) const;

    const Theme& theme_;
    const QStyleOptionMenuItem& item_;
};

} // namespace orrivane::desktop

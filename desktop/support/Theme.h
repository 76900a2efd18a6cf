#pragma once

#include <QColor>
#include <QFont>

class QApplication;

namespace orrivane::desktop {

/// Colours and type of the desktop, light or dark, and its scale.
struct Theme {
    bool dark = false;
    double scale = 1; ///< pixels a point

    QColor barBackground;
    QColor barForeground;
    QColor menuBackground;
    QColor menuBorder;
    QColor menuSeparator;
    QColor text;
    QColor faintText;
    QColor accent;
    QColor accentText;
    QColor windowBackground;
    QColor sidebarBackground;
    QColor windowBorder;
    QColor fieldBackground;

    static Theme make(bool dark, double scale);

    /// Points to whole pixels.
    int pixels(double points) const;
    QFont font(double points, QFont::Weight weight = QFont::Normal) const;
    /// Gives the application this theme's palette, font and menus.
    void install(QApplication& application) const;
};

} // namespace orrivane::desktop

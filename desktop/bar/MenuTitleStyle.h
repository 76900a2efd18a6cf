#pragma once

#include <desktop/support/MenuStyle.h>

namespace orrivane::desktop {

/// How the titles in the bar look; the menus under them have the desktop's common style.
class MenuTitleStyle final : public MenuStyle {
    Q_OBJECT

  public:
    explicit MenuTitleStyle(const Theme& theme);

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    using MenuStyle::polish;

  private:
    Theme look_;
};

} // namespace orrivane::desktop

#pragma once

#include <desktop/support/Theme.h>

#include <QProxyStyle>

namespace orrivane::desktop {

/// How every menu of the desktop looks, those of a menu bar too.
class MenuStyle : public QProxyStyle {
    Q_OBJECT

  public:
    explicit MenuStyle(const Theme& theme);

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void polish(QWidget* widget) override;
    using QProxyStyle::polish;

  private:
    Theme theme_;
};

} // namespace orrivane::desktop

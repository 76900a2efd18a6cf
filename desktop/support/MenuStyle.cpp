#include <desktop/support/MenuStyle.h>

#include <desktop/support/MenuBackdrop.h>
#include <desktop/support/MenuItemPainter.h>

#include <QMenu>
#include <QStyleFactory>
#include <QStyleOptionMenuItem>

namespace orrivane::desktop {

MenuStyle::MenuStyle(const Theme& theme)
    : QProxyStyle(QStyleFactory::create("Fusion"))
    , theme_(theme) {}

int MenuStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                           const QWidget* widget) const {
    switch (metric) {
    case PM_MenuPanelWidth:
        return 0;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return theme_.pixels(5);
    case PM_SubMenuOverlap:
        return theme_.pixels(2);
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int MenuStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
    switch (hint) {
    case SH_Menu_SupportsSections:
    case SH_Menu_MouseTracking:
    case SH_MenuBar_MouseTracking:
        return 1;
    // A choice by key looks like one by hand: nothing blinks, nothing is underlined.
    case SH_Menu_FlashTriggeredItem:
    case SH_UnderlineShortcut:
    case SH_EtchDisabledText:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

QSize MenuStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                  const QSize& contents, const QWidget* widget) const {
    if (type == CT_MenuItem)
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
            return MenuItemPainter(theme_, *item).size(contents);
    return QProxyStyle::sizeFromContents(type, option, contents, widget);
}

void MenuStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const {
    if (element == PE_PanelMenu || element == PE_FrameMenu) {
        if (const auto* backdrop = MenuBackdrop::of(widget); backdrop && element == PE_PanelMenu)
            backdrop->paint(*painter);
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void MenuStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    if (element == CE_MenuEmptyArea || element == CE_MenuHMargin || element == CE_MenuVMargin)
        return;
    if (element == CE_MenuItem) {
        if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
            MenuItemPainter(theme_, *item).paint(*painter);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void MenuStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (auto* menu = qobject_cast<QMenu*>(widget); menu && MenuBackdrop::of(menu) == nullptr)
        new MenuBackdrop(*menu, theme_);
}

} // namespace orrivane::desktop

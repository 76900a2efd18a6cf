#include <desktop/bar/MenuTitleStyle.h>

#include <QPainter>
#include <QStyleOptionMenuItem>
#include <QWidget>

namespace orrivane::desktop {

namespace {

constexpr double sidePadding = 10;   // points, beside a title
constexpr double highlightInset = 3; // points, above and below
constexpr double highlightRound = 5; // points
constexpr double highlightStrength = 0.13;

} // namespace

MenuTitleStyle::MenuTitleStyle(const Theme& theme)
    : MenuStyle(theme)
    , look_(theme) {}

int MenuTitleStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                                const QWidget* widget) const {
    switch (metric) {
    case PM_MenuBarPanelWidth:
    case PM_MenuBarHMargin:
    case PM_MenuBarVMargin:
    case PM_MenuBarItemSpacing:
        return 0;
    default:
        return MenuStyle::pixelMetric(metric, option, widget);
    }
}

QSize MenuTitleStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                       const QSize& contents, const QWidget* widget) const {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (type == CT_MenuBar)
        return contents;
    if (type != CT_MenuBarItem || item == nullptr)
        return MenuStyle::sizeFromContents(type, option, contents, widget);
    // Metrics of the item's own font, which is bold for the application's name.
    const int text = item->fontMetrics.size(Qt::TextShowMnemonic, item->text).width();
    return {text + 2 * look_.pixels(sidePadding), widget ? widget->minimumHeight() : 0};
}

void MenuTitleStyle::drawControl(ControlElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const {
    if (element == CE_MenuBarEmptyArea) {
        painter->fillRect(option->rect, look_.barBackground);
        return;
    }
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element != CE_MenuBarItem || item == nullptr)
        return MenuStyle::drawControl(element, option, painter, widget);
    painter->save();
    painter->fillRect(item->rect, look_.barBackground);
    if ((item->state & State_Selected) && (item->state & State_Sunken)) {
        const double inset = highlightInset * look_.scale;
        const double round = highlightRound * look_.scale;
        QColor shade = look_.barForeground;
        shade.setAlphaF(static_cast<float>(highlightStrength));
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(shade);
        painter->drawRoundedRect(QRectF(item->rect).adjusted(0, inset, 0, -inset), round, round);
    }
    painter->setFont(item->font);
    painter->setPen(look_.barForeground);
    painter->drawText(item->rect, Qt::AlignCenter | Qt::TextHideMnemonic | Qt::TextSingleLine,
                      item->text);
    painter->restore();
}

} // namespace orrivane::desktop

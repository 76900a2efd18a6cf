#include <desktop/support/MenuItemPainter.h>

#include <algorithm>

#include <QPainter>

namespace orrivane::desktop {

namespace {

constexpr double lineHeight = 24;
constexpr double separatorHeight = 11;
constexpr double sectionHeight = 22;
constexpr double sectionText = 11;
constexpr double sidePadding = 10;
constexpr double checkRoom = 13;
constexpr double arrowRoom = 16;
constexpr double shortcutGap = 28;

} // namespace

MenuItemPainter::MenuItemPainter(const Theme& theme, const QStyleOptionMenuItem& item)
    : theme_(theme)
    , item_(item) {}

QSize MenuItemPainter::size(const QSize& contents) const {
    if (isSeparator()) {
        if (item_.text.isEmpty())
            return {contents.width(), theme_.pixels(separatorHeight)};
        const QFontMetrics metrics(theme_.font(sectionText, QFont::DemiBold));
        return {metrics.horizontalAdvance(item_.text) + theme_.pixels(2 * sidePadding + checkRoom),
                theme_.pixels(sectionHeight)};
    }
    double room = 2 * sidePadding + (item_.menuHasCheckableItems ? checkRoom : 0);
    if (item_.text.contains('\t'))
        room += shortcutGap;
    if (item_.menuItemType == QStyleOptionMenuItem::SubMenu)
        room += arrowRoom;
    return {contents.width() + theme_.pixels(room),
            std::max(contents.height(), theme_.pixels(lineHeight))};
}

bool MenuItemPainter::isHighlighted() const {
    return (item_.state & QStyle::State_Selected) && (item_.state & QStyle::State_Enabled);
}

int MenuItemPainter::textLeft() const {
    return item_.rect.left() +
           theme_.pixels(sidePadding + (item_.menuHasCheckableItems ? checkRoom : 0));
}

void MenuItemPainter::paint(QPainter& painter) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (isSeparator()) {
        paintSeparator(painter);
        painter.restore();
        return;
    }
    if (isHighlighted()) {
        const double radius = 5 * theme_.scale;
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme_.accent);
        painter.drawRoundedRect(item_.rect, radius, radius);
    }
    const bool enabled = item_.state & QStyle::State_Enabled;
    const QColor ink = isHighlighted() ? theme_.accentText
                       : enabled       ? theme_.text
                                       : theme_.faintText;
    painter.setPen(ink);
    painter.setFont(item_.font);
    const QString title = item_.text.section('\t', 0, 0);
    const QString shortcut = item_.text.section('\t', 1);
    QRect place = item_.rect;
    place.setLeft(textLeft());
    place.setRight(item_.rect.right() - theme_.pixels(sidePadding));
    constexpr int flags = Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextHideMnemonic;
    painter.drawText(place, flags | Qt::AlignLeft, title);
    if (item_.checked)
        paintCheckMark(painter);
    if (item_.menuItemType == QStyleOptionMenuItem::SubMenu)
        paintArrow(painter);
    if (!shortcut.isEmpty()) {
        if (!isHighlighted())
            painter.setPen(theme_.faintText);
        painter.drawText(place, flags | Qt::AlignRight, shortcut);
    }
    painter.restore();
}

void MenuItemPainter::paintSeparator(QPainter& painter) const {
    if (!item_.text.isEmpty()) {
        painter.setPen(theme_.faintText);
        painter.setFont(theme_.font(sectionText, QFont::DemiBold));
        const QRect place = item_.rect.adjusted(theme_.pixels(sidePadding), 0, 0, 0);
        painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, item_.text);
        return;
    }
    const int thick = std::max(1, theme_.pixels(1));
    const int inset = theme_.pixels(sidePadding);
    painter.fillRect(QRect(item_.rect.left() + inset, item_.rect.center().y(),
                           item_.rect.width() - 2 * inset, thick),
                     theme_.menuSeparator);
}

void MenuItemPainter::paintCheckMark(QPainter& painter) const {
    const double unit = theme_.scale;
    const double left = item_.rect.left() + 7 * unit;
    const double middle = item_.rect.top() + item_.rect.height() / 2.0;
    const QPointF mark[] = {{left, middle + 0.5 * unit},
                            {left + 3 * unit, middle + 3.5 * unit},
                            {left + 8.5 * unit, middle - 4 * unit}};
    painter.save();
    painter.setPen(
        QPen(painter.pen().color(), 1.6 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(mark, 3);
    painter.restore();
}

void MenuItemPainter::paintArrow(QPainter& painter) const {
    const double unit = theme_.scale;
    const double right = item_.rect.right() - 9 * unit;
    const double middle = item_.rect.top() + item_.rect.height() / 2.0;
    const QPointF arrow[] = {{right - 4 * unit, middle - 4 * unit},
                             {right, middle},
                             {right - 4 * unit, middle + 4 * unit}};
    painter.save();
    painter.setPen(
        QPen(painter.pen().color(), 1.5 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(arrow, 3);
    painter.restore();
}

} // namespace orrivane::desktop

#include <desktop/windows/NotesSidebar.h>

#include <desktop/windows/WindowTitle.h>

#include <QMouseEvent>
#include <QPainter>

namespace orrivane::desktop {

namespace {

constexpr double rowHeight = 48;
constexpr double sideInset = 8;

} // namespace

NotesSidebar::NotesSidebar(const Theme& theme, QWidget* parent)
    : QWidget(parent)
    , theme_(theme) {}

void NotesSidebar::setRows(std::vector<Row> rows, std::size_t chosen) {
    rows_ = std::move(rows);
    chosen_ = chosen;
    update();
}

QRect NotesSidebar::placeOf(std::size_t row) const {
    const int inset = theme_.pixels(sideInset);
    const int top = theme_.pixels(WindowTitle::points + 4 + rowHeight * static_cast<double>(row));
    return {inset, top, width() - 2 * inset, theme_.pixels(rowHeight)};
}

void NotesSidebar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), theme_.sidebarBackground);
    const int line = std::max(1, theme_.pixels(0.8));
    painter.fillRect(QRect(width() - line, 0, line, height()), theme_.menuSeparator);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const QRect place = placeOf(i);
        const bool chosen = i == chosen_;
        if (chosen) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(theme_.accent);
            painter.drawRoundedRect(place, 7 * theme_.scale, 7 * theme_.scale);
        }
        const QRect text = place.adjusted(theme_.pixels(10), theme_.pixels(7), -theme_.pixels(10),
                                          -theme_.pixels(7));
        const auto write = [&](const QString& words, double points, QFont::Weight weight,
                               Qt::Alignment side, const QColor& color) {
            painter.setFont(theme_.font(points, weight));
            painter.setPen(color);
            painter.drawText(text, static_cast<int>((side | Qt::AlignLeft).toInt()),
                             painter.fontMetrics().elidedText(words, Qt::ElideRight, text.width()));
        };
        QColor faint = theme_.accentText;
        faint.setAlphaF(0.78F);
        write(rows_[i].title, 13, QFont::DemiBold, Qt::AlignTop,
              chosen ? theme_.accentText : theme_.text);
        write(rows_[i].below, 11.5, QFont::Normal, Qt::AlignBottom,
              chosen ? faint : theme_.faintText);
    }
}

void NotesSidebar::mousePressEvent(QMouseEvent* event) {
    for (std::size_t i = 0; i < rows_.size(); ++i)
        if (placeOf(i).contains(event->position().toPoint())) {
            emit picked(i);
            return;
        }
}

} // namespace orrivane::desktop

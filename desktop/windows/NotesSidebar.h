#pragma once

#include <desktop/support/Theme.h>

#include <vector>

#include <QWidget>

namespace orrivane::desktop {

/// The list of notes, one chosen.
class NotesSidebar final : public QWidget {
    Q_OBJECT

  public:
    struct Row {
        QString title;
        QString below;
    };

    NotesSidebar(const Theme& theme, QWidget* parent);

    void setRows(std::vector<Row> rows, std::size_t chosen);

  signals:
    void picked(std::size_t row);

  private:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    QRect placeOf(std::size_t row) const;

    Theme theme_;
    std::vector<Row> rows_;
    std::size_t chosen_ = 0;
};

} // namespace orrivane::desktop

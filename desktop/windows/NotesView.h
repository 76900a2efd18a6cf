#pragma once

#include <desktop/windows/AppMenuPublisher.h>
#include <desktop/windows/NotesSidebar.h>

class QTextEdit;

namespace orrivane::desktop {

/// A few notes to read and write; nothing is kept.
class NotesView final : public QWidget {
    Q_OBJECT

  public:
    static constexpr double sidebarWidth = 196; ///< points

    explicit NotesView(const Theme& theme);

    static std::vector<PublishedMenu> menus();
    void choose(const QString& menu, const QString& entry);

  private:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void show(std::size_t note);
    void keepText();
    void listNotes();
    void setTextSize(double points);

    Theme theme_;
    std::vector<QString> notes_; // the first line is the title
    std::size_t shown_ = 0;
    double textSize_ = 14;
    NotesSidebar* sidebar_;
    QTextEdit* text_;
};

} // namespace orrivane::desktop

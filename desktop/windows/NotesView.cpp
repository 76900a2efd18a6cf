#include <desktop/windows/NotesView.h>

#include <desktop/windows/WindowTitle.h>

#include <algorithm>

#include <QPainter>
#include <QTextBlock>
#include <QTextEdit>

namespace orrivane::desktop {

NotesView::NotesView(const Theme& theme)
    : theme_(theme)
    , notes_{QStringLiteral("Weekend on the Coast\n\nLeave on Friday at four, before the ferry "
                            "fills up.\n\n•  Lantern and spare batteries\n•  The blue tent, not "
                            "the small one\n•  Bread, olives, two lemons\n\nAsk Ilse for the key "
                            "to the boat house."),
             QStringLiteral("Reading List\n\nThe essay on harbours\nA field guide to lichens\n"),
             QStringLiteral("Kitchen Shelf\n\n82 cm wide, 24 deep. Oak or ash.\n"),
             QStringLiteral("Questions for Monday\n\nWhen does the new desk arrive?\n")}
    , sidebar_(new NotesSidebar(theme, this))
    , text_(new QTextEdit(this)) {
    text_->setFrameShape(QFrame::NoFrame);
    text_->setAcceptRichText(false);
    text_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    text_->setAccessibleName(QStringLiteral("Note"));
    connect(text_, &QTextEdit::textChanged, this, &NotesView::keepText);
    connect(sidebar_, &NotesSidebar::picked, this, &NotesView::show);
    setTextSize(textSize_);
    show(0);
}

std::vector<PublishedMenu> NotesView::menus() {
    return {{"File", {"New Note", "Delete Note"}},
            {"Edit", {"Undo", "Redo", "-", "Copy", "Paste", "Select All"}},
            {"View", {"Bigger", "Smaller"}}};
}

void NotesView::choose(const QString&, const QString& entry) {
    if (entry == QLatin1String("New Note")) {
        notes_.insert(notes_.begin(), QStringLiteral("New Note\n\n"));
        show(0);
    } else if (entry == QLatin1String("Delete Note") && notes_.size() > 1) {
        notes_.erase(notes_.begin() + static_cast<std::ptrdiff_t>(shown_));
        show(std::min(shown_, notes_.size() - 1));
    } else if (entry == QLatin1String("Undo")) {
        text_->undo();
    } else if (entry == QLatin1String("Redo")) {
        text_->redo();
    } else if (entry == QLatin1String("Copy")) {
        text_->copy();
    } else if (entry == QLatin1String("Paste")) {
        text_->paste();
    } else if (entry == QLatin1String("Select All")) {
        text_->selectAll();
    } else if (entry == QLatin1String("Bigger")) {
        setTextSize(std::min(textSize_ + 2, 32.0));
    } else if (entry == QLatin1String("Smaller")) {
        setTextSize(std::max(textSize_ - 2, 10.0));
    }
}

void NotesView::show(std::size_t note) {
    shown_ = note;
    {
        const QSignalBlocker quiet(text_);
        text_->setPlainText(notes_[note]);
    }
    setTextSize(textSize_);
    listNotes();
}

void NotesView::keepText() {
    notes_[shown_] = text_->toPlainText();
    listNotes();
}

void NotesView::listNotes() {
    std::vector<NotesSidebar::Row> rows;
    for (const QString& note : notes_)
        rows.push_back({note.section('\n', 0, 0),
                        note.section('\n', 1, -1, QString::SectionSkipEmpty).simplified()});
    sidebar_->setRows(std::move(rows), shown_);
}

void NotesView::setTextSize(double points) {
    textSize_ = points;
    const QSignalBlocker quiet(text_);
    text_->setFont(theme_.font(points));
    // The first line is the note's title.
    QTextCursor cursor(text_->document()->firstBlock());
    cursor.select(QTextCursor::BlockUnderCursor);
    QTextCharFormat title;
    title.setFont(theme_.font(points + 8, QFont::Bold));
    cursor.setCharFormat(title);
}

void NotesView::resizeEvent(QResizeEvent*) {
    const int side = theme_.pixels(sidebarWidth);
    const int top = theme_.pixels(WindowTitle::points);
    const int inset = theme_.pixels(18);
    sidebar_->setGeometry(0, 0, side, height());
    text_->setGeometry(side + inset, top, std::max(0, width() - side - 2 * inset),
                       std::max(0, height() - top - theme_.pixels(8)));
}

void NotesView::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), theme_.windowBackground);
}

} // namespace orrivane::desktop

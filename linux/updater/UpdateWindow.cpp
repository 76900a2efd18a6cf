#include <linux/updater/UpdateWindow.h>

#include <linux/updater/NotesBrowser.h>

#include <QApplication>
#include <QCursor>
#include <QDialog>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace orrivane {

namespace {

constexpr int iconSize = 64;     // points
constexpr int dialogWidth = 480; // points
constexpr int textWidth = 360;   // points
constexpr int notesHeight = 200; // points
constexpr int progressSteps = 1000;

QLabel* textLabel(QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

class UpdateWindow::Dialog : public QDialog {
  public:
    Dialog() {
        setWindowTitle("Software Update");
        auto* rows = new QHBoxLayout(this);
        rows->setContentsMargins(20, 20, 20, 20);
        rows->setSpacing(16);
        auto* icon = new QLabel(this);
        icon->setPixmap(qApp->windowIcon().pixmap(QSize(iconSize, iconSize), devicePixelRatio()));
        rows->addWidget(icon, 0, Qt::AlignTop);
        auto* column = new QVBoxLayout;
        rows->addLayout(column, 1);
        column->addWidget(headline_ = textLabel(this));
        column->addWidget(text_ = textLabel(this));
        column->addWidget(notes_ = new NotesBrowser(this), 1);
        column->addWidget(progress_ = new QProgressBar(this));
        column->addLayout(buttons_ = new QHBoxLayout);
        column->setSpacing(10);
        auto font = headline_->font();
        font.setBold(true);
        headline_->setFont(font);
        notes_->setMinimumHeight(notesHeight);
        progress_->setTextVisible(false);
        progress_->setAccessibleName("Progress");
        setMinimumWidth(dialogWidth);
    }

    void present(const UpdatePage& page, std::function<void(UpdateChoice)> chosen) {
        chosen_ = std::move(chosen);
        onClose_ = page.onClose;
        headline_->setText(QString::fromStdString(page.headline));
        text_->setText(QString::fromStdString(page.text));
        text_->setVisible(!page.text.empty());
        const bool hasNotes = page.notes && !(page.notes->text.empty() && page.notes->link.empty());
        notes_->setVisible(hasNotes);
        if (hasNotes)
            notes_->show(*page.notes);
        progress_->setVisible(page.isBusy);
        // Without an end the bar runs from side to side.
        progress_->setRange(0, page.progress ? progressSteps : 0);
        setButtons(page.buttons);
        for (auto* label : {headline_, text_})
            makeRoom(*label);
        layout()->activate();
        resize(layout()->totalMinimumSize().expandedTo({dialogWidth, 0}));
    }

    // A place of our own: the next page may come before the window manager has told the one that
    // it chose, and a size is sent together with a place.
    void centre() {
        const auto* screen = QGuiApplication::screenAt(QCursor::pos());
        if (!screen)
            screen = QGuiApplication::primaryScreen();
        if (!screen)
            return;
        const auto area = screen->availableGeometry();
        // Above the middle: most pages are higher than the first.
        move(area.center().x() - width() / 2, area.top() + area.height() / 4);
    }

    void setProgress(double part) { progress_->setValue(static_cast<int>(part * progressSteps)); }

    void reject() override { choose(onClose_); }

  private:
    // The toolkit's layouts guess how high wrapped text is; a path may be one long word.
    static void makeRoom(QLabel& label) {
        int width = textWidth;
        for (const auto& word : label.text().split(QRegularExpression(QStringLiteral("\\s"))))
            width = std::max(width, label.fontMetrics().horizontalAdvance(word) + 1);
        label.setMinimumSize(width, std::max(0, label.heightForWidth(width)));
    }

    void setButtons(const std::vector<UpdateButton>& buttons) {
        while (auto* item = buttons_->takeAt(0)) {
            // Perhaps the very one whose click led here.
            if (auto* old = item->widget()) {
                old->hide();
                old->deleteLater();
            }
            delete item;
        }
        const auto stretchAfter = buttons.size() > 2 ? 1U : 0U;
        for (std::size_t index = 0; index < buttons.size(); ++index) {
            if (index == stretchAfter)
                buttons_->addStretch(1);
            addButton(buttons[index], index + 1 == buttons.size());
        }
    }

    void addButton(const UpdateButton& button, bool isDefault) {
        auto* widget = new QPushButton(QString::fromStdString(button.label), this);
        widget->setAutoDefault(isDefault);
        widget->setDefault(isDefault);
        connect(widget, &QPushButton::clicked, this,
                [this, choice = button.choice] { choose(choice); });
        buttons_->addWidget(widget);
        if (isDefault)
            widget->setFocus();
    }

    void choose(UpdateChoice choice) {
        // The handler may present the next page or end this dialog.
        if (const auto chosen = std::exchange(chosen_, nullptr))
            chosen(choice);
    }

    std::function<void(UpdateChoice)> chosen_;
    UpdateChoice onClose_ = UpdateChoice::close;
    QLabel* headline_;
    QLabel* text_;
    NotesBrowser* notes_;
    QProgressBar* progress_;
    QHBoxLayout* buttons_;
};

UpdateWindow::UpdateWindow() = default;
UpdateWindow::~UpdateWindow() = default;

void UpdateWindow::present(const UpdatePage& page, std::function<void(UpdateChoice)> chosen) {
    const bool isNew = !dialog_;
    if (isNew)
        dialog_ = std::make_unique<Dialog>();
    dialog_->present(page, std::move(chosen));
    if (!isNew)
        return;
    dialog_->centre();
    bringForward();
}

void UpdateWindow::setProgress(double part) {
    if (dialog_)
        dialog_->setProgress(part);
}

void UpdateWindow::bringForward() {
    if (!dialog_)
        return;
    dialog_->show();
    dialog_->raise();
    dialog_->activateWindow();
}

void UpdateWindow::dismiss() {
    // Not deleted at once: this may run inside one of its buttons.
    if (auto* dialog = dialog_.release()) {
        dialog->hide();
        dialog->deleteLater();
    }
}

bool UpdateWindow::hasFocus() const {
    return QApplication::activeWindow() != nullptr;
}

} // namespace orrivane

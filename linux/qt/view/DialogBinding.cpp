#include <linux/qt/view/ControlBindings.h>

#include <QAbstractButton>
#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

namespace orrivane {

namespace {

constexpr QSize iconSize(48, 48);  // points
constexpr int narrowestText = 320; // points

/// A question as a window of its own over the screen's window.
class DialogBinding : public Binding {
  public:
    explicit DialogBinding(const View& first)
        : Binding(first, new QWidget) {}
    ~DialogBinding() override { close(); }

  protected:
    bool takesRoom() const override { return false; }
    void apply(const View& next) override {
        node_ = std::get<ConfirmationDialog>(next.node);
        if (node_.isPresented && !box_)
            open();
        else if (!node_.isPresented)
            close();
    }

  private:
    void open() {
        box_ = new QMessageBox(QMessageBox::NoIcon, QStringLiteral("Orrivane"), text(node_.title),
                               QMessageBox::NoButton, inner()->window());
        box_->setIconPixmap(qApp->windowIcon().pixmap(iconSize, box_->devicePixelRatio()));
        box_->setInformativeText(text(node_.message));
        // Left alone, the toolkit makes a short question as narrow as its buttons.
        for (auto* each : box_->findChildren<QLabel*>())
            if (each->wordWrap())
                each->setMinimumWidth(narrowestText);
        box_->setAttribute(Qt::WA_DeleteOnClose);
        box_->setWindowModality(Qt::WindowModal);
        for (const auto& each : node_.buttons) {
            const bool cancels = each.role == DialogButtonRole::cancel;
            auto* button = box_->addButton(label(each.title), cancels ? QMessageBox::RejectRole
                                                                      : QMessageBox::ActionRole);
            button->setAccessibleName(text(each.title));
            if (cancels)
                box_->setEscapeButton(button);
            if (&each == node_.buttons.data())
                box_->setDefaultButton(button);
            buttons_.push_back(button);
        }
        QObject::connect(box_, &QMessageBox::finished, this, [this] { finished(); });
        box_->open();
    }

    void finished() {
        auto action = node_.closed;
        const auto found = std::ranges::find(buttons_, box_->clickedButton());
        if (found != buttons_.end() && box_->clickedButton())
            action = node_.buttons[static_cast<std::size_t>(found - buttons_.begin())].chosen;
        box_ = nullptr;
        buttons_.clear();
        // Not every window manager gives the keyboard back.
        if (inner())
            inner()->window()->activateWindow();
        if (action.run)
            action.run();
    }

    // Without an answer: what is shown has changed under the question.
    void close() {
        if (!box_)
            return;
        QObject::disconnect(box_, nullptr, this, nullptr);
        box_->close();
        box_ = nullptr;
        buttons_.clear();
    }

    ConfirmationDialog node_;
    QPointer<QMessageBox> box_;
    std::vector<QAbstractButton*> buttons_;
};

} // namespace

std::unique_ptr<Binding> bindDialog(const View& view) {
    return std::make_unique<DialogBinding>(view);
}

} // namespace orrivane

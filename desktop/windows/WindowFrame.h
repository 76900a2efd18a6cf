#pragma once

#include <desktop/windows/Toast.h>
#include <desktop/windows/WindowTitle.h>

namespace orrivane::desktop {

/// An ordinary window that draws its own edge. Its content fills it and leaves room for the title
/// at the top.
class WindowFrame final : public QWidget {
    Q_OBJECT

  public:
    /// Takes the content.
    WindowFrame(const Theme& theme, QWidget* content);

    WindowTitle& title() { return *title_; }
    void say(const QString& text) { toast_->say(text); }

  private:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEdge();

    Theme theme_;
    QWidget* content_;
    WindowTitle* title_;
    QWidget* edge_;
    QWidget* grip_;
    Toast* toast_;
};

} // namespace orrivane::desktop

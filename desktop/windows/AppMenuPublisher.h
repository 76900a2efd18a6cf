#pragma once

#include <string>
#include <vector>

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <xcb/xcb.h>

class QWidget;

namespace orrivane::desktop {

struct PublishedMenu {
    std::string title;
    std::vector<std::string> entries; ///< "-" is a separator
};

/// Tells the bar which menus a window has, and hears what was chosen there.
class AppMenuPublisher final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    /// `application` names the menu that the bar itself puts in front, with "Quit" in it.
    AppMenuPublisher(QWidget& window, std::string application, std::vector<PublishedMenu> menus);
    ~AppMenuPublisher() override;

  signals:
    void chosen(const QString& menu, const QString& entry);
    void quitChosen(const QString& menu, const QString& entry);

  private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void take(int menu, int entry);

    xcb_window_t window_;
    xcb_atom_t choice_;
    std::string application_;
    std::vector<PublishedMenu> menus_;
};

} // namespace orrivane::desktop

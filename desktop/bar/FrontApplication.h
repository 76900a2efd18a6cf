#pragma once

#include <desktop/bar/AppMenu.h>
#include <desktop/bar/RootWatch.h>

#include <string>
#include <vector>

#include <QTimer>

namespace orrivane::desktop {

/// The application whose window is active, and the menus it publishes.
class FrontApplication final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    struct State {
        xcb_window_t window = 0; ///< 0: nobody's, the desktop itself is in front
        std::string name;
        std::vector<AppMenu> menus;

        friend bool operator==(const State&, const State&) = default;
    };
    /// The number of the menu that carries the application's name.
    static constexpr int nameMenu = -1;

    explicit FrontApplication(RootWatch& root);
    ~FrontApplication() override;

    [[nodiscard]] const State& state() const { return state_; }
    /// Tells the application what was chosen. One that publishes no menus is closed by the only
    /// entry it has, which quits it.
    void choose(int menu, int entry) const;

  signals:
    void changed();

  private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void look();
    void take(xcb_window_t window);

    xcb_atom_t activeProperty_;
    xcb_atom_t menusProperty_;
    State state_;
    xcb_window_t active_ = 0; // as the window manager says; may be gone already
    QTimer nobody_;
};

} // namespace orrivane::desktop

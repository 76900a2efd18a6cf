#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace orrivane::e2e {

/// A window with a connection of its own, as another program's would be; an icon for the tray or a
/// window of an application. Requests are checked; failures throw std::runtime_error.
class ClientWindow {
  public:
    struct Options {
        std::string className;
        int width = 20; ///< pixels
        int height = 20;
        bool declaresWidth = true; ///< by WM_NORMAL_HINTS
        bool overrideRedirect = false;
    };

    ClientWindow(const std::string& display, const Options& options);
    ~ClientWindow();
    ClientWindow(const ClientWindow&) = delete;
    ClientWindow& operator=(const ClientWindow&) = delete;

    [[nodiscard]] xcb_window_t id() const { return id_; }
    /// The program ends; its window goes with it.
    void end();

    // An icon
    void declareWidth(int width);
    void askForWidth(int width);
    void wantToShow(bool shown);
    /// Asks the present tray for a place.
    void dock();
    /// The same for any window at all, whoever it belongs to.
    void askToDock(xcb_window_t window);
    void moveToRoot();
    /// Presses of the pointer's buttons so far.
    int presses();

    // A window of an application
    void map();
    void publishMenus(const std::string& text);
    /// Numbers of the client messages of this type so far.
    std::vector<std::array<std::uint32_t, 5>> messages(const std::string& type);

  private:
    void require(xcb_void_cookie_t cookie, const std::string& what);
    xcb_atom_t atom(const std::string& name);
    void setWords(const std::string& property, xcb_atom_t type,
                  const std::vector<std::uint32_t>& words);
    void setBytes(const std::string& property, const std::string& type, const std::string& bytes);
    void readEvents();

    xcb_connection_t* connection_;
    xcb_window_t root_ = 0;
    xcb_window_t id_ = 0;
    int presses_ = 0;
    std::vector<xcb_client_message_event_t> messages_;
};

} // namespace orrivane::e2e
